#pragma once

#include "plugin/BasicPlugin.h"
#include "plugin/Host.h"

#include <string>

namespace tesseralis {
extern template class BasicPlugin<Host>;

/// The plug-in of a host module, which evaluates texts. A module uses the four channels through its plug-in.
class TESSERALIS_API HostPlugin : public BasicPlugin<Host>
{
public:
    explicit HostPlugin(unsigned int attributes = 0);
    HostPlugin(std::string const & name, unsigned int attributes);
    ~HostPlugin() override;

    static std::string GetTypeName();
    static Object * createObject(std::string const & name, unsigned int attributes);

    /// Undefined where the module throws, too, which is reported on the standard error stream.
    Variant evaluate(std::string const & text, Object * object) const override;

    /// What the module has to say while it evaluates, for the console that the plug-in is in, if it is in one.
    virtual void message(std::string const & text);
    virtual void information(std::string const & text);
    virtual void warning(std::string const & text);
    virtual void error(std::string const & text);

    std::string GetObjectTypeName() const override;

protected:
    explicit HostPlugin(HostPlugin *);
    void constructHostPlugin(std::string const & name, unsigned int attributes);
    void destroyHostPlugin();

private:
    void reportEvaluateException() const noexcept;
};
} // namespace tesseralis
