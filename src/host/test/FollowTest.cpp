#include "HostProgram.h"

#include <csignal>
#include <cstdio>
#include <functional>
#include <utility>

#include <poll.h>
#include <unistd.h>

using namespace tesseralis::test;
namespace fs = std::filesystem;

namespace {
/// The program while it runs, and all that it says.
class Running
{
public:
    explicit Running(std::vector<std::string> const & arguments)
        : m_output(popen(("echo $$ && exec " + commandOf(arguments) + " 2>&1").c_str(), "r"))
    {
        EXPECT_TRUE(says("\n"));
        m_process = std::stoi(text);
    }
    ~Running()
    {
        if (m_output != nullptr) {
            end(SIGKILL);
        }
    }
    Running(Running const &) = delete;
    Running & operator=(Running const &) = delete;

    /// Whether it says this, after what was waited for before.
    bool says(std::string const & words)
    {
        std::size_t found = 0;
        while ((found = text.find(words, m_position)) == std::string::npos) {
            if (!readMore()) {
                return false;
            }
        }
        m_position = found + words.size();
        return true;
    }
    /// Its exit status.
    int end(int signal)
    {
        kill(m_process, signal);
        while (readMore()) {
        }
        int const status = pclose(std::exchange(m_output, nullptr));
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    std::string text;

private:
    bool readMore()
    {
        if (m_output == nullptr) {
            return false;
        }
        constexpr int c_patience = 60000; // milliseconds
        pollfd output = {fileno(m_output), POLLIN, 0};
        char piece[4096];
        ssize_t const size = poll(&output, 1, c_patience) == 1 ? read(output.fd, piece, sizeof piece) : 0;
        text.append(piece, static_cast<std::size_t>(size));
        return size > 0;
    }

    FILE * m_output;
    pid_t m_process = 0;
    std::size_t m_position = 0;
};

std::string documentWith(std::string const & value)
{
    return "<tesseralis><nobody name=\"n\"/><session name=\"s\"><property name=\"a\" type=\"integer\">" + value +
           "</property></session></tesseralis>";
}

using FollowedDocument = HostProgram;
} // namespace

TEST_F(FollowedDocument, IsLoadedAgainHoweverItIsSaved)
{
    fs::path const file = pathOf("s.xml");
    fs::path const link = pathOf("link.xml");
    fs::path const fresh = pathOf("fresh.xml");
    fs::create_directory(pathOf("elsewhere"));
    fs::create_symlink("s.xml", link);
    write(file, documentWith("9"));
    Running program({link, "--follow", "--set", "s.a=8", "--get", "s.a", "--save", pathOf("saved.xml")});
    EXPECT_TRUE(program.says("8\nfile: following '" + link.string() + "'\n"));

    using Way = std::function<void(std::string const &)>;
    Way const ways[] = {
        [&](auto const & text) { std::ofstream(file, std::ios::in | std::ios::out) << text; },
        [&](auto const & text) { write(file, text); },
        [&](auto const & text) { write(fresh, text), fs::rename(fresh, file); },
        [&](auto const & text) { fs::rename(file, pathOf("s.xml~")), write(file, text); },
        [&](auto const & text) { write(pathOf("elsewhere/s"), text), fs::rename(pathOf("elsewhere/s"), file); },
        [&](auto const & text) {
            fs::remove(file);
            EXPECT_TRUE(program.says("can't be read at present; it is loaded when it comes back."));
            write(file, text);
        },
        [&](auto const & text) { // and from here on another file
            write(pathOf("elsewhere/t.xml"), text);
            fs::create_symlink("elsewhere/t.xml", fresh);
            fs::rename(fresh, link);
        },
        [&](auto const & text) { write(pathOf("elsewhere/t.xml"), text); },
        [&](auto const & text) { write(fresh, text), fs::rename(fresh, link); },
    };
    int value = 0;
    for (Way const & way : ways) {
        way(documentWith(std::to_string(value)));
        EXPECT_TRUE(program.says("registry: added 's'\n")) << value;
        EXPECT_TRUE(program.says("s: changed property 'a' = " + std::to_string(value++) + "\nfile: loaded\n"));
    }
    write(link, documentWith("99"));
    EXPECT_EQ(program.end(SIGINT), 0) << program.text;
    EXPECT_EQ(run({pathOf("saved.xml"), "--get", "s.a"}).out, "99\n") << "an edit of the last moment counts";
}

TEST_F(FollowedDocument, ThatCantBeLoadedChangesNothing)
{
    std::string const file = pathOf("s.xml");
    write(file, documentWith("1"));
    Running program({file, "--follow", "--watch", "--save", pathOf("saved.xml")});
    Running saving({file, "--follow", "--save", file});
    EXPECT_TRUE(program.says("file: following") && saving.says("file: following"));
    write(pathOf("libplugin_x.so"), "");
    write(file,
          "<tesseralis><session name=\"s\"><property name=\"b\" type=\"integer\">2</property></session><host name="
          "\"h\" filename=\"" +
              pathOf("libplugin_x.so") + "\"/><nobody name=\"n\"/></tesseralis>");
    EXPECT_TRUE(program.says("'h' is not loaded, since it isn't in a module folder"));
    EXPECT_TRUE(program.says("s: changed property 'b' = 2\n") && program.says("file: loaded\n"));
    EXPECT_TRUE(saving.says("s: removed property 'a'\ns: added property 'b' = 2\nfile: loaded\n"));

    for (auto const & [text, words] : {std::pair{std::string("<tesseralis>\n</a>"), "(line 2, column 1: "},
                                       {std::string("<document/>"), "its root tag is 'document'"},
                                       {documentWith("none"), "a string value of 'none'"}}) {
        write(file, text);
        EXPECT_TRUE(program.says(words) && saving.says("The objects stay what they were.\n")) << program.text;
    }
    EXPECT_EQ(saving.end(SIGTERM), 1);
    EXPECT_TRUE(saving.says("isn't saved, since what it holds now would be lost.\n"));
    EXPECT_EQ(contentOf(file), documentWith("none"));
    EXPECT_EQ(program.end(SIGTERM), 0) << program.text;
    EXPECT_EQ(run({pathOf("saved.xml"), "--no-modules", "--get", "s.b"}).out, "2\n");
    EXPECT_PRED2(contains, contentOf(pathOf("saved.xml")), "<nobody name=\"n\">");
}
