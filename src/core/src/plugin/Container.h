#pragma once

#include "plugin/PluginContainer.h"

#include <list>
#include <string>

namespace tesseralis {
class EditorPlugin;

/// A plug-in container that also keeps its editors in the order of their addition. What comes as a plug-in of no
/// particular kind is sent to the operation for editors if it is one; subclasses do the same for kinds of their own.
class TESSERALIS_API Container : public PluginContainer
{
public:
    explicit Container(unsigned int attributes);
    Container(std::string const & name, unsigned int attributes);
    ~Container() override;

    static std::string GetTypeName();
    static Object * createObject(std::string const & name, unsigned int attributes);

    void add(Plugin * plugin) override;
    void remove(Plugin * plugin) override;
    /// An editor that is added twice stands in the order twice; one removal takes out both.
    virtual void add(EditorPlugin * editor);
    virtual void remove(EditorPlugin * editor);

    std::string GetObjectTypeName() const override;

protected:
    void initialize(Plugin * plugin) override;
    void uninitialize(Plugin * plugin) override;
    virtual void initialize(EditorPlugin * editor);
    virtual void uninitialize(EditorPlugin * editor);

    explicit Container(Container *);
    void constructContainer(std::string const & name, unsigned int attributes);
    void destroyContainer();

private:
    friend class ContainerEditorIterator;

    std::list<EditorPlugin *> m_editors; // in order of addition
};

/// Walks the editors of a container in the order of their addition. Takes no lock.
class TESSERALIS_API ContainerEditorIterator : public detail::PointerIterator<std::list<EditorPlugin *>>
{
public:
    explicit ContainerEditorIterator(Container & container) : PointerIterator(container.m_editors) {}
};
} // namespace tesseralis
