#include "value/Serializer.h"

#include "support/Messages.h"
#include "support/TemporaryDirectory.h"
#include "value/Archive.h"
#include "value/MemorySerializer.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

using namespace tesseralis;
using namespace tesseralis::test;
using namespace std::string_literals;

namespace {
std::string repeat(std::string const & text, std::size_t count)
{
    std::string result;
    for (std::size_t i = 0; i < count; ++i) {
        result += text;
    }
    return result;
}

std::string attributes(int count)
{
    std::string result;
    for (int i = 0; i < count; ++i) {
        result += " a" + std::to_string(i) + "=''";
    }
    return result;
}

std::string written(Archive archive)
{
    std::string text;
    MemorySerializer().save(text, archive);
    return text;
}

/// What a document is read as, in the compact form, or the message if it can't be read.
std::string reread(std::string const & text)
{
    Archive archive;
    std::string const message = messageOf([&] { MemorySerializer().load(archive, text); });
    if (!archive.IsEmpty()) {
        return written(archive);
    }
    return message;
}

/// Each letter stands for one of the things that are hard to carry.
std::string nastyText(std::mt19937 & random)
{
    static std::vector<std::string> const s_parts = {
        "]",     "]]>", "<![CDATA[", "<a>",     "</a>",     "<!--", "-->",         "&",    "&#x41;", "&#x",
        "&#",    ";",   "\"",        "'",       "\r\n",     "\n",   "\t",          " ",    "\x01",   ">",
        "&amp;", "x",   "?>",        "\x7f",    "\xc3\xa4", "\xe4", "\r",          "\xef", "\xff",   "=",
        "/",     "%s",  "\x1f",      "<?xml?>", "<!",       "]]",   "\xef\xbb\xbf"};
    std::string text;
    for (std::size_t i = random() % 8; i > 0; --i) {
        text += s_parts[random() % s_parts.size()];
    }
    return text;
}

void grow(ArchiveElement element, std::mt19937 & random, int depth)
{
    static std::vector<std::string> const s_names = {"a", "property", "_", "x-1.y:z", "\xc3\xa4", "xml"};
    element.SetValue(nastyText(random));
    for (std::string const & name : s_names) {
        if (random() % 3 == 0) {
            element.SetAttribute(name, nastyText(random));
        }
    }
    for (std::size_t i = depth == 0 ? 0 : random() % 4; i > 0; --i) {
        grow(element.store(s_names[random() % s_names.size()]), random, depth - 1);
    }
}

class SerializedFile : public testing::Test
{
protected:
    void write(std::string const & text) const { std::ofstream(filename, std::ios::binary) << text; }
    std::string read() const
    {
        std::ostringstream text;
        text << std::ifstream(filename, std::ios::binary).rdbuf();
        return text.str();
    }

    TemporaryDirectory directory;
    std::string const filename = directory.GetPath("100%s.xml");
    Serializer serializer{filename};
    Archive archive;
};
} // namespace

TEST_F(SerializedFile, HasFourBlanksAnIndentAndABufferNone)
{
    ArchiveElement root = ArchiveElement(archive).store("root");
    root.SetAttribute("b", "\"1\"");
    root.SetAttribute("a", "");
    root.SetValue("two\nlines");
    root.store("empty");
    root.store("full").store("inner");
    Archive copy(archive);
    serializer.save(copy);
    EXPECT_EQ(read(), "<root b='&quot;1&quot;' a=\"\">\n    <![CDATA[two\nlines]]>\n\n    <empty></empty>\n"
                      "    <full>\n        <inner></inner>\n    </full>\n</root>\n");
    EXPECT_EQ(written(archive), "<root b='&quot;1&quot;' a=\"\"><![CDATA[two\nlines]]><empty></empty>"
                                "<full><inner></inner></full></root>");

    EXPECT_EQ(written(copy), "<root b='&quot;1&quot;' a=\"\"><![CDATA[two\nlines]]></root>") << "saving consumes";
}

TEST_F(SerializedFile, BringsBackAnyTreeToTheByte)
{
    std::mt19937 random(11);
    for (int i = 0; i < 2000; ++i) {
        Archive source;
        grow(ArchiveElement(source).store("root"), random, 3);
        Archive again;
        MemorySerializer().load(again, written(source));
        ASSERT_EQ(ArchiveElement(again), ArchiveElement(source)) << written(source);
        ASSERT_EQ(written(again), written(source)) << "the order of attributes";

        if (i % 100 != 0) {
            continue;
        }
        Archive consumed(source);
        serializer.save(consumed);
        Archive fromFile;
        serializer.load(fromFile);
        ASSERT_EQ(ArchiveElement(fromFile), ArchiveElement(source)) << read();
    }
}

TEST(XmlText, IsReadByTheRulesOfTheFormat)
{
    struct Case
    {
        std::string text, result;
    };
    std::vector<Case> const cases = {
        {"<?xml version='1.0'?><!-- c --><a b = 'c'/>", "<a b=\"c\"></a>"},
        {"<a>\r\n  one \t two\r\n</a>\r\n", "<a><![CDATA[one two]]></a>"},
        {"<a><![CDATA[ one\r\n]]>two<b/></a>", "<a><![CDATA[ one\r\n]]><b></b></a>"},
        {"<a><b/>text</a>", "<a><b></b></a>"},
        {"<a><!-- c -->text</a>", "<a></a>"},
        {"<a><![CDATA[1]]> <![CDATA[2]]><![CDATA[3]]><b/><![CDATA[4]]></a>", "<a><![CDATA[123]]><b></b></a>"},
        {"<a>1<![CDATA[2]]></a>", "<a><![CDATA[1]]></a>"},
        {"<a><![CDATA[1]]>2<![CDATA[3]]></a>", "<a><![CDATA[1]]></a>"},
        {"<a>&lt;&#65;&#x42;&unknown;</a>", "<a><![CDATA[<ABunknown;]]></a>"},
        {"<a/><b/>", "<a></a>"},
        {"<!DOCTYPE a><a><?php x?><b c=d></b></a>", "<a><b c=\"d\"></b></a>"},
        {"<a>\xe4</a>", "<a><![CDATA[\xe4]]></a>"},
        {"<?xml encoding='latin1'?><a>&#228;\xe4</a>", "<a><![CDATA[\xe4\xe4]]></a>"},
        {"\xef\xbb\xbf<a>&#228;\xc3\xa4</a>", "<a><![CDATA[\xc3\xa4\xc3\xa4]]></a>"},
        {"<a>&#<b></b>#;</a>", "<a></a>"},
    };
    for (Case const & c : cases) {
        EXPECT_EQ(reread(c.text), c.result) << c.text;
    }
}

TEST(XmlText, AFaultIsToldWithItsPlace)
{
    std::string const start = "Error loading from buffer";
    std::vector<std::pair<std::string, std::string>> const cases = {
        {"", " (line 0, column 0: Error document empty.)!"},
        {"<!-- nothing -->", "!"},
        {"<a>\n  <b></c>\n</a>", " (line 2, column 6: Error reading end tag.)!"},
        {"<a\n b='1'\n b='2'/>", " (line 3, column 2: Error parsing Element.)!"},
        {"<a>", " (line 0, column 0: Error reading Element value.)!"},
        {"<a>\n\t\0</a>"s, " (line 2, column 5: NUL byte)!"},
        {"\xef\xbb\xbf<a>\r\n\xc3\xa4 \xe4</a>", " (line 2, column 3: invalid UTF-8)!"},
        {"<?xml version='1.0'?><a>\xc3</a>", " (line 1, column 25: invalid UTF-8)!"},
        {"<?xml encoding='utf-8'?><a>\xed\xa0\x80</a>", " (line 1, column 28: invalid UTF-8)!"},
        {"<a>\n<b" + attributes(1025) + "/></a>", " (line 2, column 1: more than 1024 attributes)!"},
        {repeat("<a>", 513), " (line 1, column 1537: elements nested deeper than 512)!"},
        {repeat("<a b='&#'>#;'>", 40000), " (line 1, column 7169: elements nested deeper than 512)!"},
    };
    for (auto const & [text, message] : cases) {
        EXPECT_EQ(reread(text), start + message) << text.substr(0, 100);
    }
}

TEST(XmlText, HasLimitsThatItCanReach)
{
    for (std::string const & text : {"<a" + attributes(1024) + "/>", repeat("<a>", 512) + repeat("</a>", 512)}) {
        Archive archive;
        MemorySerializer serializer;
        serializer.SetSizeLimit(text.size());
        serializer.load(archive, text);
        serializer.SetSizeLimit(text.size() - 1);
        Archive tooLarge;
        EXPECT_EQ(messageOf([&] { serializer.load(tooLarge, text); }),
                  "Error loading from buffer (line 0, column 0: more than " + std::to_string(text.size() - 1) +
                      " bytes)!");
        EXPECT_EQ(reread(written(archive)), written(archive));
    }
}

TEST(XmlText, TakesNoTimeOverADocumentMadeToBeSlow)
{
    std::string const message = reread(repeat("<a>", 511) + repeat("<a/>", 1000000) + repeat("</a>", 511));
    EXPECT_NE(message.find("too many deeply nested elements"), std::string::npos) << message;
}

TEST(XmlText, WhatCannotBeCarriedIsRefusedAndTheArchiveKeepsIt)
{
    using Edit = void (*)(ArchiveElement);
    struct Case
    {
        Edit edit;
        std::string cause;
    };
    for (Case const & c : {Case{[](ArchiveElement e) { e.SetValue("\0"s); }, "NUL byte"},
                           Case{[](ArchiveElement e) { e.SetAttribute("a", "x\0y"s); }, "NUL byte"},
                           Case{[](ArchiveElement e) { e.SetAttribute("", ""); }, "'' can't be a name"},
                           Case{[](ArchiveElement e) { e.store(); }, "'' can't be a name"},
                           Case{[](ArchiveElement e) { e.store("a b"); }, "'a b' can't be a name"},
                           Case{[](ArchiveElement e) { e.SetName("1"); }, "'1' can't be a name"},
                           Case{[](ArchiveElement e) { e.SetAttribute("a=", ""); }, "'a=' can't be a name"},
                           Case{[](ArchiveElement e) { e.SetValue(std::string(2000, 'x')); }, "more than 2000 bytes"},
                           Case{[](ArchiveElement e) {
                                    for (int i = 0; i < 1025; ++i) {
                                        e.SetAttribute("a" + std::to_string(i), "");
                                    }
                                },
                                "more than 1024 attributes"},
                           Case{[](ArchiveElement e) {
                                    for (int i = 0; i < 600; ++i) {
                                        e = e.store("e");
                                    }
                                },
                                "elements nested deeper than 512"}}) {
        Archive archive;
        c.edit(ArchiveElement(archive).store("root").store("child"));
        Archive before(archive);
        std::string text = "as it was";
        MemorySerializer serializer;
        serializer.SetSizeLimit(2000);
        EXPECT_EQ(messageOf([&] { serializer.save(text, archive); }),
                  "Error saving to buffer (line 0, column 0: " + c.cause + ")!");
        EXPECT_EQ(text, "as it was");
        EXPECT_EQ(ArchiveElement(archive), ArchiveElement(before));
    }
}

TEST_F(SerializedFile, TellsItsNameInMessages)
{
    std::string const start = " '" + filename + "'";
    EXPECT_EQ(messageOf([&] { serializer.save(archive); }), "Error saving to" + start + "!");
    EXPECT_EQ(messageOf([&] { serializer.load(archive); }),
              "Error loading from" + start + " (line 0, column 0: Failed to open file)!");
    for (auto const & [text, message] : std::vector<std::pair<std::string, std::string>>{
             {"", " (line 0, column 0: Error document empty.)!"},
             {"<?xml?>", "!"},
             {"<a>\n</b>", " (line 2, column 1: Error reading end tag.)!"}}) {
        write(text);
        EXPECT_EQ(messageOf([&] { serializer.load(archive); }), "Error loading from" + start + message);
    }
    EXPECT_TRUE(archive.IsEmpty());

    std::filesystem::remove(filename);
    std::filesystem::create_directory(filename);
    EXPECT_EQ(messageOf([&] { serializer.load(archive); }),
              "Error loading from" + start + " (line 0, column 0: Is a directory)!");
    EXPECT_EQ(messageOf([&] { Serializer("/dev/zero").load(archive); }),
              "Error loading from '/dev/zero' (line 0, column 0: more than 67108864 bytes)!");
    std::string text;
    EXPECT_EQ(messageOf([&] { MemorySerializer().save(text, archive); }), "Error saving to buffer!");
    EXPECT_EQ(messageOf([&] { MemorySerializer().load(archive, nullptr); }),
              "Error loading from buffer (line 0, column 0: Error document empty.)!");
}

TEST_F(SerializedFile, LoadedTwiceBecomesALastChild)
{
    write("<a><b/></a>");
    serializer.load(archive);
    Serializer(serializer).load(archive);
    EXPECT_EQ(written(archive), "<a><b></b><a><b></b></a></a>");
}
