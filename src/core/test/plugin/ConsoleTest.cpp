#include "plugin/Console.h"
#include "plugin/HostPlugin.h"
#include "support/Modules.h"
#include "value/Variant.h"

namespace {
class FrontEnd : public Console
{
public:
    FrontEnd() : Console(0u) {}
    ~FrontEnd() override { destroyConsole(); }

    void message(Plugin * plugin, std::string const & text) override { note(plugin, "message: " + text); }
    void information(Plugin * plugin, std::string const & text) override { note(plugin, "information: " + text); }
    void warning(Plugin * plugin, std::string const & text) override { note(plugin, "warning: " + text); }
    void error(Plugin * plugin, std::string const & text) override { note(plugin, "error: " + text); }
    void note(Plugin * plugin, std::string const & text) { notes.push_back(plugin->GetObjectName() + ", " + text); }

    std::vector<std::string> notes;
};

HostPlugin * makeHost(std::string const & name)
{
    auto * const host = new HostPlugin(name, ObjectAttribute::Registered);
    host->SetFilename(moduleFile("sample_host"));
    return host;
}
} // namespace

TEST(ConsoleEvaluation, IsDoneByTheHostThatWasAddedFirst)
{
    FrontEnd console;
    EXPECT_FALSE(console.evaluate("1").IsDefined());
    HostPlugin * const first = makeHost("first");
    HostPlugin * const second = makeHost("second");
    console.add(static_cast<Plugin *>(first));
    console.add(second);
    ConsoleHostIterator hosts(console);
    EXPECT_EQ(&*hosts, first);
    EXPECT_EQ(&*++hosts, second);
    EXPECT_TRUE((++hosts).IsAtEnd());

    EXPECT_EQ(console.evaluate("1"), Variant("1"));
    EXPECT_EQ(console.notes, (std::vector<std::string>{"first, message: m 1", "first, information: i 1",
                                                       "first, warning: w 1", "first, error: e 1"}));
    first->suspend();
    EXPECT_FALSE(console.evaluate("2").IsDefined());
    delete first;
    EXPECT_EQ(console.evaluate("3"), Variant("3"));
    console.remove(second);
    EXPECT_FALSE(console.evaluate("4").IsDefined());

    // Outside a console nobody hears it.
    second->initialize();
    console.notes.clear();
    EXPECT_EQ(second->evaluate("5", nullptr), Variant("5"));
    EXPECT_TRUE(console.notes.empty());
    delete second;
}

TEST(HostPluginEvaluation, ReportsWhatTheModuleThrows)
{
    FrontEnd console;
    HostPlugin * const host = makeHost("host");
    console.add(host);
    for (int const fault : {1, 2, 3, 4}) {
        host->GetProperty("Fault") = fault;
        auto const [output, error] = outputOf([&] { EXPECT_FALSE(console.evaluate("1").IsDefined()); });
        EXPECT_EQ(error,
                  "host (" + moduleFile("sample_host") +
                      (fault == 1 ? "): Error in 'evaluate' - It is broken.\n" : "): Unknown error in 'evaluate'.\n"));
        EXPECT_EQ(output, "");
    }
}
