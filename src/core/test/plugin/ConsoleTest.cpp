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
    void error(Plugin * plugin, std::string const & text) override
    {
        note(plugin, "error: " + text);
        if (auto const once = std::exchange(reaction, nullptr)) {
            once(plugin);
        }
    }
    void note(Plugin * plugin, std::string const & text) { notes.push_back(plugin->GetObjectName() + ", " + text); }

    Texts notes;
    std::function<void(Plugin *)> reaction; // to the next error
};

HostPlugin * addHost(Console & console)
{
    auto * const host = new HostPlugin("host", ObjectAttribute::Registered);
    host->SetFilename(moduleFile("sample_host"));
    console.add(static_cast<Plugin *>(host));
    return host;
}
} // namespace

TEST(ConsoleEvaluation, IsDoneByTheHostThatWasAddedFirst)
{
    FrontEnd console;
    EXPECT_FALSE(console.evaluate("1").IsDefined());
    HostPlugin * const first = addHost(console);
    HostPlugin * const second = addHost(console);
    ConsoleHostIterator hosts(console);
    EXPECT_EQ(&*hosts, first);
    EXPECT_EQ(&*++hosts, second);
    EXPECT_TRUE((++hosts).IsAtEnd());

    EXPECT_EQ(console.evaluate("1"), Variant("1"));
    EXPECT_EQ(console.notes,
              (Texts{"host, message: m 1", "host, information: i 1", "host, warning: w 1", "host, error: e 1"}));
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
    HostPlugin * const host = addHost(console);
    for (int const fault : {1, 2, 3, 4}) {
        host->GetProperty("Fault") = fault;
        auto const [output, error] = outputOf([&] { EXPECT_FALSE(console.evaluate("1").IsDefined()); });
        EXPECT_EQ(output + error,
                  "host (" + moduleFile("sample_host") + "): " +
                      (fault == 1 ? "Error in 'evaluate' - It is broken.\n" : "Unknown error in 'evaluate'.\n"));
    }
}

TEST(HostPluginEvaluation, MayLeadToTheEndOfItsOwnPlugin)
{
    struct Case
    {
        std::function<void(Plugin *)> end;
        bool isKept;
        bool isLoaded;
    };
    Case const cases[] = {{[](Plugin * plugin) { plugin->suspend(); }, true, false},
                          {[](Plugin * plugin) { plugin->suspend(), plugin->resume(); }, true, true},
                          {[](Plugin * plugin) { delete plugin; }, false, false}};
    for (auto const & [end, isKept, isLoaded] : cases) {
        for (int const fault : {0, 1}) {
            FrontEnd console;
            HostPlugin * const host = addHost(console);
            host->GetProperty("Fault") = fault;
            console.reaction = [&](Plugin *) {
                console.reaction = end;
                EXPECT_EQ(console.evaluate("inner").IsDefined(), fault == 0);
                EXPECT_TRUE(isMapped(moduleFile("sample_host")));
                EXPECT_FALSE(isKept && host->HasProperty("Called")) << "the instance that runs is deleted";
            };
            Variant result;
            std::string const output = outputOf([&] { result = console.evaluate("outer"); }).first;
            EXPECT_EQ(result, fault == 0 ? Variant("outer") : Variant());
            EXPECT_EQ(output, fault == 1 && !isKept ? repeat("It is broken.\n\n", 2) : "");
            EXPECT_EQ(isMapped(moduleFile("sample_host")), isLoaded);
            EXPECT_TRUE(!isKept || host->GetProperty("Called") == Variant("destructor"));
        }
    }
}
