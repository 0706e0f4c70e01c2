#include "value/Serializer.h"
#include "support/TemporaryDirectory.h"
#include "support/Testing.h"
#include "value/Archive.h"
#include "value/MemorySerializer.h"

#include <fstream>

using namespace std::string_literals;

namespace {
using Table = std::vector<std::pair<std::string, std::string>>;

std::string attributes(int count)
{
    std::string result;
    for (int i = 0; i < count; ++i) {
        result += " a" + std::to_string(i) + "=\"\"";
    }
    return result;
}

std::string written(Archive archive)
{
    std::string text;
    MemorySerializer().save(text, archive);
    return text;
}

/// What a document is read as, in the compact form, or why it can't be read.
std::string reread(std::string const & text)
{
    Archive archive;
    std::string const message = messageOf([&] { MemorySerializer().load(archive, text); });
    return archive.IsEmpty() ? message.substr(message.find('(')) : written(archive);
}

std::string pick(std::mt19937 & random, std::vector<std::string> const & words)
{
    return words[random() % words.size()];
}

std::string nastyText(std::mt19937 & random)
{
    std::string text;
    for (std::size_t i = random() % 8; i > 0; --i) {
        text += pick(random, {"]",     "]]",     "]]>", "<![CDATA[", "<a>",         "</a>", "<!--", "-->",
                              "&",     "&#x41;", "&#x", "&#",        ";",           "\"",   "'",    "\r\n",
                              "\n",    "\r",     "\t",  " ",         "\x01",        "\x1f", ">",    "<",
                              "&amp;", "x",      "?>",  "\x7f",      "\xc3\xa4",    "\xe4", "\xef", "\xff",
                              "=",     "/",      "%s",  "<?xml?>",   "\xef\xbb\xbf"});
    }
    return text;
}

void grow(ArchiveElement element, std::mt19937 & random, int depth)
{
    std::vector<std::string> const names = {"a", "property", "_", "x-1.y:z", "\xc3\xa4", "xml"};
    element.SetValue(nastyText(random));
    for (std::size_t i = random() % 4; i > 0; --i) {
        element.SetAttribute(pick(random, names), nastyText(random));
    }
    for (std::size_t i = depth == 0 ? 0 : random() % 4; i > 0; --i) {
        grow(element.store(pick(random, names)), random, depth - 1);
    }
}

class SerializedFile : public testing::Test
{
protected:
    std::string read() const
    {
        std::ifstream file(filename, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
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
    root.store("full").store("inner");
    Archive copy(archive);
    serializer.save(copy);
    EXPECT_EQ(read(), "<root b='&quot;1&quot;' a=\"\">\n    <![CDATA[two\nlines]]>\n\n"
                      "    <full>\n        <inner></inner>\n    </full>\n</root>\n");
    std::string const start = "<root b='&quot;1&quot;' a=\"\"><![CDATA[two\nlines]]>";
    EXPECT_EQ(written(archive), start + "<full><inner></inner></full></root>");
    EXPECT_EQ(written(copy), start + "</root>") << "saving consumes";

    serializer.load(archive);
    EXPECT_EQ(written(archive),
              start + "<full><inner></inner></full>" + start + "<full><inner></inner></full></root></root>")
        << "loaded into an archive that isn't empty";
}

TEST_F(SerializedFile, BringsBackAnyTreeToTheByte)
{
    std::mt19937 random(11);
    for (int i = 0; i < 2000; ++i) {
        Archive source;
        grow(ArchiveElement(source).store("root"), random, 3);
        std::string const text = written(source);
        Archive again;
        MemorySerializer().load(again, text);
        ASSERT_EQ(ArchiveElement(again), ArchiveElement(source)) << text;
        ASSERT_EQ(written(again), text) << "the order of attributes";
        if (i % 100 != 0) {
            continue;
        }
        serializer.save(source);
        Archive fromFile;
        serializer.load(fromFile);
        ASSERT_EQ(ArchiveElement(fromFile), ArchiveElement(again)) << read();

        Serializer limited(filename);
        limited.SetSizeLimit(read().size() - 1);
        EXPECT_NE(messageOf([&] { limited.save(fromFile); }), "nothing was thrown");
        ASSERT_EQ(ArchiveElement(fromFile), ArchiveElement(again)) << "refused in time";
        limited.SetSizeLimit(read().size());
        limited.save(fromFile);
    }
}

TEST(XmlText, IsReadByTheRulesOfTheFormatAndAFaultToldWithItsPlace)
{
    for (auto const & [text, result] :
         Table{{"<?xml version='1.0'?><!-- c --><a b = 'c'/>", "<a b=\"c\"></a>"},
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
               {"<a>\n  <b></c>\n</a>", "(line 2, column 6: Error reading end tag.)!"},
               {"<a\n b='1'\n b='2'/>", "(line 3, column 2: Error parsing Element.)!"},
               {"<a>", "(line 0, column 0: Error reading Element value.)!"},
               {"<a>\n\t\0</a>"s, "(line 2, column 5: NUL byte)!"},
               {"\xef\xbb\xbf<a>\r\n\xc3\xa4 \xe4</a>", "(line 2, column 3: invalid UTF-8)!"},
               {"<?xml version='1.0'?><a>\xc3</a>", "(line 1, column 25: invalid UTF-8)!"},
               {"<?xml encoding='utf-8'?><a>\xed\xa0\x80</a>", "(line 1, column 28: invalid UTF-8)!"},
               {"<a" + attributes(1024) + "/>", "<a" + attributes(1024) + "></a>"},
               {"<a>\n<b" + attributes(1025) + "/></a>", "(line 2, column 1: more than 1024 attributes)!"},
               {repeat("<a>", 512) + repeat("</a>", 512), repeat("<a>", 512) + repeat("</a>", 512)},
               {repeat("<a>", 513), "(line 1, column 1537: elements nested deeper than 512)!"},
               {repeat("<a b='&#'>#;'>", 40000), "(line 1, column 7169: elements nested deeper than 512)!"},
               {repeat("<a>", 511) + repeat("<a/>", 1000000),
                "(line 1, column 2101770: too many deeply nested elements or attributes)!"}}) {
        EXPECT_EQ(reread(text), result) << text.substr(0, 100);
    }
}

TEST(XmlText, WhatCannotBeCarriedIsRefusedAndTheArchiveKeepsIt)
{
    struct Case
    {
        std::string name, attribute, value, cause;
        int depth = 2;
    };
    std::string const large(9999, 'x');
    for (Case const & c :
         {Case{"e", "a", "x\0y"s, "NUL byte"}, Case{"", "a", "", "'' can't be a name"},
          Case{"e", "", "", "'' can't be a name"}, Case{"a b", "a", "", "'a b' can't be a name"},
          Case{"1", "a", "", "'1' can't be a name"}, Case{"e", "a=", "", "'a=' can't be a name"},
          Case{"e", "a", large, "more than 9999 bytes"}, Case{"e", "a", "", "elements nested deeper than 512", 513}}) {
        Archive archive;
        ArchiveElement element = ArchiveElement(archive).store("e");
        for (int depth = 2; depth <= c.depth; ++depth) {
            element = element.store(c.name);
        }
        element.SetAttribute(c.attribute, c.value);
        Archive before(archive);
        MemorySerializer serializer;
        serializer.SetSizeLimit(9999);
        std::string text = "as it was";
        EXPECT_EQ(messageOf([&] { serializer.save(text, archive); }),
                  "Error saving to buffer (line 0, column 0: " + c.cause + ")!");
        EXPECT_EQ(text, "as it was");
        EXPECT_EQ(ArchiveElement(archive), ArchiveElement(before));
    }
}

TEST_F(SerializedFile, TellsItsNameInMessages)
{
    auto const expectFailure = [&](std::string const & message) {
        EXPECT_EQ(messageOf([&] { serializer.load(archive); }), "Error loading from '" + filename + "'" + message);
        EXPECT_TRUE(archive.IsEmpty());
    };
    expectFailure(" (line 0, column 0: Failed to open file)!");
    for (auto const & [text, message] : Table{{"", " (line 0, column 0: Error document empty.)!"},
                                              {"<?xml?>", "!"},
                                              {"<a>\n</b>", " (line 2, column 1: Error reading end tag.)!"}}) {
        std::ofstream(filename) << text;
        expectFailure(message);
    }
    serializer.SetSizeLimit(7);
    expectFailure(" (line 0, column 0: more than 7 bytes)!");
    for (auto const & entry : Table{{"/dev/zero", "more than 67108864 bytes"}, {"/", "Is a directory"}}) {
        EXPECT_EQ(messageOf([&] { Serializer(entry.first).load(archive); }),
                  "Error loading from '" + entry.first + "' (line 0, column 0: " + entry.second + ")!");
    }
    EXPECT_EQ(messageOf([&] { serializer.save(archive); }), "Error saving to '" + filename + "'!");
    std::string text;
    EXPECT_EQ(messageOf([&] { MemorySerializer().save(text, archive); }), "Error saving to buffer!");
    EXPECT_EQ(messageOf([&] { MemorySerializer().load(archive, nullptr); }),
              "Error loading from buffer (line 0, column 0: Error document empty.)!");
    EXPECT_EQ(messageOf([&] { MemorySerializer().load(archive, "<!-- nothing -->"); }), "Error loading from buffer!");
}
