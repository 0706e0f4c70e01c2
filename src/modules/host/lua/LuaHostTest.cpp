#include "math/Color.h"
#include "math/Vector.h"
#include "plugin/Console.h"
#include "plugin/HostPlugin.h"
#include "plugin/Session.h"
#include "support/Testing.h"
#include "value/PropertyContainerExpression.h"
#include "value/Variant.h"

namespace {
class FrontEnd : public Console
{
public:
    FrontEnd() : Console(0u) {}
    ~FrontEnd() override { destroyConsole(); }

    void message(Plugin *, std::string const & text) override
    {
        messages.push_back(text);
        if (text == "fail") {
            throw Exception("The front end is full!");
        }
    }

    Texts messages;
};

class LuaHost : public testing::Test
{
protected:
    LuaHost()
    {
        host->SetFilename(LUA_MODULE);
        console.add(host);
        session.addProperty("a", 2);
        session.addProperty("b", 0.1f);
        session.addProperty("on", true);
        session.addProperty("name", std::string("snail"));
        session.addProperty("v", Vector(1, 2, 3));
        session.addProperty("limited", Variant::TypeInteger(1, 0, 10));
    }

    std::string evaluate(std::string const & text) { return host->evaluate(text, &session).GetJSON(true); }
    /// What the host writes to standard error, without its own name.
    std::string errorOf(std::string const & text)
    {
        auto const run = [&] { EXPECT_FALSE(host->evaluate(text, &session).IsDefined()) << text; };
        std::string const error = outputOf(run).second;
        std::string const intro = "lua (" LUA_MODULE "): Error in 'evaluate' - ";
        return error.starts_with(intro) ? error.substr(intro.size()) : "no error of the script: " + error;
    }

    FrontEnd console;
    HostPlugin * const host = new HostPlugin("lua", ObjectAttribute::Registered);
    Session session{"s", ObjectAttribute::Registered};
};
} // namespace

TEST_F(LuaHost, GivesTheValueOfAnExpressionOrOfWhatIsReturned)
{
    std::pair<char const *, Variant> const cases[] = {
        {"6 * 7", 42},
        {"return 6 * 7", 42},
        {"local t = 0 for i = 1, 4 do t = t + i end return t", 10},
        {"", Variant()},
        {"kept = 5", Variant()},
        {"kept + 1", 6},
        {"objects.s.a + objects['s']['b']", 2.1f},
        {"self.on and self.name .. '!'", std::string("snail!")},
        {"self == objects.s and self.v.y", 2.0f},
        {"objects.nobody == nil and self.nothing == nil", true},
        {"{x = 1, y = 2, z = 3.5}", Vector(1, 2, 3.5f)},
        {"{r = 1, g = 2.5 * 2, b = 300, a = 255 / 2}", Color(1, 5, 255, 128)},
        {"('key = value'):match('^%s*(%w+)%s*=')", std::string("key")},
        {"#('word '):rep(100000):gsub('%w+', '')", 100000},
        {"table.concat({table.unpack({1, 2, 3}, 2)}, '-')", std::string("2-3")},
        {"xpcall(error, function(text) caught = 'no ' .. text end, 'way') or caught", std::string("no way")},
    };
    for (auto const & [text, value] : cases) {
        EXPECT_EQ(host->evaluate(text, &session), value) << text;
    }
    EXPECT_EQ(evaluate("{1, 'two', {three = true}}"), R"([1,"two",{"three":true}])");
    EXPECT_EQ(evaluate("local t = {1} return {t, {t, t}, t}"), "[[1],[[1],[1]],[1]]");
    EXPECT_EQ(evaluate("local all = '' for name in pairs(self) do all = all .. name .. ' ' end return all"),
              R"("a b on name v limited ")");
}

TEST_F(LuaHost, SetsPropertiesOfAllTypes)
{
    for (char const * text : {"self.a = 3", "objects.s.b = 0.5", "self.on = not self.on", "self.name = 'tuft'",
                              "self.v = {x = 4, y = 5, z = 6}", "self.limited = '7'", "self.new = {1, {2}}"}) {
        host->evaluate(text, &session);
    }
    EXPECT_EQ(evaluate("{self.a, self.b, self.on, self.name, self.v.z, self.limited, self.new}"),
              R"([3,0.5,false,"tuft",6,7,[1,[2]]])");
    EXPECT_EQ(errorOf("\nself.limited = 11"), "script:2: Unable to assign an integer value of 11 to this variant!\n");
    EXPECT_EQ(session.GetProperty("limited"), Variant(7));
}

TEST_F(LuaHost, TellsWhatIsWrongAndWhere)
{
    std::pair<char const *, char const *> const cases[] = {
        {"\n\nnothing.x = 1", "script:3: attempt to index a nil value (global 'nothing')"},
        {"a = = 1", "script:1: unexpected symbol near '='"},
        {"\nerror('boom')", "script:2: boom"},
        {"\nerror({})", "script:2: an error that is no text but a table"},
        {"error(42)", "script:1: 42"},
        {"self = 1", "script:1: 'self' can't be set!"},
        {"objects.s = 1", "script:1: Objects can't be set!"},
        {"self.a = nil", "script:1: The property 'a' can't be set to nothing!"},
        {"function() end", "A function is no value!"},
        {"1 << 40", "The integer 1099511627776 is too large for a value!"},
        {"{[true] = 1}", "Only texts can be keys of a map!"},
        {"local t = {} t.t = t return t", "A table is nested deeper than 64!"},
        {"print('fail')", "script:1: The front end is full!"},
        {"setmetatable({}, {__gc = print})", "script:1: finalizers are not available"},
        {"(('a'):rep(1000000)):find('.-b')",
         "script:1: the pattern has too many repetitions for a text of this length"},
    };
    for (auto const & [text, error] : cases) {
        EXPECT_EQ(errorOf(text), std::string(error) + "\n") << text;
    }
    // None of them has broken the host.
    console.messages.clear();
    host->evaluate("print('a', 1, 2.5, nil, self) print()", &session);
    EXPECT_EQ(console.messages, (Texts{"a\t1\t2.5\tnil\ts", ""}));
}

TEST_F(LuaHost, KeepsFilesProcessesAndModulesAway)
{
    for (char const * name :
         {"io", "os.execute", "os.getenv", "os.remove", "os.exit", "os.rename", "os.tmpname", "require", "package",
          "load", "loadfile", "dofile", "debug", "string.dump", "collectgarbage", "coroutine",
          "getmetatable(self).__index", "getmetatable(objects).__index"}) {
        EXPECT_EQ(evaluate(std::string("pcall(function() assert(") + name + ") end)"), "false") << name;
    }
    EXPECT_EQ(evaluate("os.time() > 0 and os.clock() >= 0"), "true");
}

TEST_F(LuaHost, StopsWhatPassesALimit)
{
    std::tuple<char const *, Variant, char const *, Texts> const cases[] = {
        {"Instruction limit",
         200000,
         "instructions",
         {"while true do pcall(function() while true do end end) end",
          "xpcall(function() while true do end end, function() while true do end end)",
          "local x <close> = setmetatable({}, {__close = function() while true do end end}) while true do end",
          "('').rep('', 1 << 62)", "('').rep('x', 1e9)", "table.move({}, 1, math.maxinteger - 1, 2)",
          "table.move({}, math.mininteger, math.maxinteger, 2)", "table.unpack({}, 1, 1 << 62)",
          "table.concat(setmetatable({}, {__index = rawlen}), '', 1, 1 << 62)", "(('a'):rep(10000)):find('.-b')",
          "local t = {} for i = 1, 30 do t = {t, t} end return t",
          "local s = ('x'):rep(9e4) for i = 1, 1e4 do self['p' .. i] = s end"}},
        {"Time limit", 0.05f, "time", {"while true do end", "while true do pcall(table.unpack, {}, 1, 90) end"}},
        {"Memory limit",
         2 << 20,
         "memory",
         {"local t = {} while true do t[#t + 1] = ('x'):rep(10000) .. #t end", "('x'):rep(5000000)",
          "local function f() return 1 + f() end f()"}},
    };
    for (auto const & [limit, value, kind, texts] : cases) {
        Variant const usual = host->GetProperty(limit);
        host->GetProperty(limit) = value;
        for (std::string const & text : texts) {
            std::string const error = errorOf(text);
            EXPECT_NE(error.find(std::string("stopped at its limit of ") + kind), std::string::npos) << text << error;
        }
        host->GetProperty(limit) = usual;
        EXPECT_EQ(evaluate("6 * 7"), "42");
    }
}

TEST_F(LuaHost, RefusesObjectsThatHaveDied)
{
    auto other = std::make_unique<Session>("other", ObjectAttribute::Registered);
    auto hidden = std::make_unique<Session>("hidden", 0u);
    evaluate("other = objects.other");
    host->evaluate("hidden = self", hidden.get());
    other.reset();
    hidden.reset();
    for (char const * text :
         {"other.a + 1", "other.a = 1", "'' .. tostring(other)", "for name in pairs(other) do end", "hidden.a + 1"}) {
        EXPECT_EQ(errorOf(text), "script:1: The object does not exist any more!\n") << text;
    }
    EXPECT_EQ(errorOf("other"), "The object does not exist any more!\n");
}

TEST_F(LuaHost, ComputesPropertiesAlsoFromWithinAScript)
{
    session.addProperty("sum", 0.0f);
    session.addProperty("twice", 0.0f);
    char const * const expressions[][3] = {{"sum", "a", "self.a + self.b"}, {"twice", "sum", "2 * self.sum"}};
    for (auto const & [name, trigger, text] : expressions) {
        PropertyContainerExpression expression(host, text);
        session.GetProperty(trigger).addObserver(&expression);
        session.SetPropertyExpression(name, expression);
    }
    EXPECT_EQ(evaluate("self.a = 1 return {self.sum, self.twice, self.name}"), R"([1.1,2.2,"snail"])");
    // `self` belongs to the evaluation, also where one runs within another.
    Session caller("caller", 0u);
    caller.addProperty("name", std::string("caller"));
    EXPECT_EQ(host->evaluate("objects.s.a = 5 return self.name", &caller), Variant(std::string("caller")));
    EXPECT_EQ(session.GetProperty("twice"), Variant(10.2f));
    for (auto const & expression : expressions) { // which would be computed again while the session goes
        session.SetPropertyExpression(expression[0], PropertyContainerExpression());
    }
}
