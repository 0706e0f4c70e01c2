#pragma once

#include "plugin/Interactor.h"
#include "plugin/ViewPlugin.h"

#include <string>

namespace tesseralis {
extern template class BasicPlugin<Interactor>;
extern template class ViewPlugin<Interactor>;

/// The plug-in of an interactor module.
class TESSERALIS_API InteractorPlugin : public ViewPlugin<Interactor>
{
public:
    explicit InteractorPlugin(unsigned int attributes = 0);
    InteractorPlugin(std::string const & name, unsigned int attributes);
    ~InteractorPlugin() override;

    static std::string GetTypeName();
    static Object * createObject(std::string const & name, unsigned int attributes);

    void display(Canvas & canvas) override;
    void overlay(Canvas & canvas) override;

    std::string GetObjectTypeName() const override;

protected:
    explicit InteractorPlugin(InteractorPlugin *);
    void constructInteractorPlugin(std::string const & name, unsigned int attributes);
    void destroyInteractorPlugin();
};
} // namespace tesseralis
