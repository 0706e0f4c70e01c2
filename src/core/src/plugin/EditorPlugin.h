#pragma once

#include "plugin/BasicPlugin.h"
#include "plugin/Editor.h"

#include <string>

namespace tesseralis {
extern template class BasicPlugin<Editor>;

/// The plug-in of an editor module. It has the property "Enabled", false at first.
class TESSERALIS_API EditorPlugin : public BasicPlugin<Editor>
{
public:
    explicit EditorPlugin(unsigned int attributes = 0);
    EditorPlugin(std::string const & name, unsigned int attributes);
    ~EditorPlugin() override;

    static std::string GetTypeName();
    static Object * createObject(std::string const & name, unsigned int attributes);

    Widget * GetWidget() override;
    std::list<Widget *> GetToolWidgets() override;
    std::list<Widget *> GetDockWidgets() override;
    std::list<Action *> GetMainActions() override;
    std::list<Action *> GetQuickActions() override;
    void onInitialized() override;

    /// What an editor asks of the host's status bar. Nothing happens here; a host that has one derives from this class.
    virtual void setStatusMessage(std::string const &) {}
    virtual void clearStatusMessage() {}
    virtual void addStatusWidget(Widget *) {}
    virtual void removeStatusWidget(Widget *) {}

    std::string GetObjectTypeName() const override;

protected:
    explicit EditorPlugin(EditorPlugin *);
    void constructEditorPlugin(std::string const & name, unsigned int attributes);
    void destroyEditorPlugin();
};
} // namespace tesseralis
