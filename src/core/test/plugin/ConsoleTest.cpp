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

    std::vector<std::string> notes;
    std::function<void(Plugin *)> reaction; // to the next error
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
            HostPlugin * const host = makeHost("host");
            console.add(host);
            host->GetProperty("Fault") = fault;
            console.reaction = [&](Plugin * plugin) {
                EXPECT_EQ(console.evaluate("inner").IsDefined(), fault == 0);
                end(plugin);
                EXPECT_TRUE(isMapped(moduleFile("sample_host")));
                EXPECT_FALSE(isKept && host->HasProperty("Called")) << "the instance that runs is deleted";
            };
            Variant result;
            std::string const output = outputOf([&] { result = console.evaluate("outer"); }).first;
            EXPECT_EQ(result, fault == 0 ? Variant("outer") : Variant());
            EXPECT_EQ(output, fault == 1 && !isKept ? "It is broken.\n\n" : "");
            EXPECT_EQ(isMapped(moduleFile("sample_host")), isLoaded);
            EXPECT_TRUE(!isKept || host->GetProperty("Called") == Variant("destructor"));
        }
    }
}
