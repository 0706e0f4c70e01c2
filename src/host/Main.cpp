#include "Document.h"
#include "Follower.h"
#include "Frame.h"
#include "HostConsole.h"
#include "HostViewer.h"
#include "Listing.h"
#include "Modules.h"
#include "Output.h"
#include "PropertyPath.h"
#include "Text.h"
#include "Watcher.h"

#include "object/Exception.h"
#include "object/Tesseralis.h"
#include "object/Version.h"
#include "plugin/ModuleGuard.h"
#include "value/Variant.h"

#include <CLI/CLI.hpp>

#include <csignal>
#include <exception>
#include <iostream>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <vector>

namespace tesseralis::host {
namespace {
struct Options
{
    std::string session;
    std::vector<std::string> assignments;
    std::optional<std::string> get;
    std::optional<std::string> save;
    std::vector<std::string> moduleFolders;
    std::optional<std::string> evaluate;
    FrameOptions frame;
    bool list = false;
    bool json = false;
    bool watch = false;
    bool follow = false;
    bool listModules = false;
    bool trust = false;
    bool noModules = false;

    Modules::Trust GetTrust() const
    {
        return noModules ? Modules::Trust::Nothing : trust ? Modules::Trust::Everything : Modules::Trust::Folders;
    }
    Watcher::Scope GetScope() const { return watch ? Watcher::Scope::Objects : Watcher::Scope::Registry; }
};

void declareOptions(CLI::App & application, Options & options)
{
    application.set_version_flag("--version", "tesseralis " + Tesseralis::Get().GetVersion().GetString());
    CLI::Option * const session = application.add_option("session", options.session, "The session document to load");
    session->type_name("SESSION.xml");
    application
        .add_option("--set", options.assignments,
                    "Set a property from a text; may be given more than once, in order. Limits hold, options "
                    "select, file names are split at ';'")
        ->type_name("OBJECT.PROPERTY=TEXT")
        ->allow_extra_args(false)
        ->take_all();
    application.add_flag(
        "--list", options.list,
        "Print all objects (type, name) and their properties (name, type, value, limits; hidden, link, "
        "expression)");
    CLI::Option * const get =
        application.add_option("--get", options.get, "Print one value as text")->type_name("OBJECT.PROPERTY");
    application.add_flag("--json", options.json, "Print the value of --get as JSON, with its type and limits")
        ->needs(get);
    application
        .add_option("--evaluate", options.evaluate,
                    "Have the console's first host evaluate a text, and print the result; scripts see the objects")
        ->type_name("TEXT");
    application.add_flag("--watch", options.watch, "Print every event while the changes are made");
    application
        .add_flag("--follow", options.follow,
                  "Stay after all this, load the document again whenever its file changes, print what happens, and "
                  "draw the frame anew; Ctrl-C ends it, and then --save comes")
        ->needs(session);
    application
        .add_option("--save", options.save,
                    "Save all objects to a document; the old file stays whole until the new one is complete")
        ->type_name("OUT.xml");
    application
        .add_option("--modules", options.moduleFolders,
                    "A folder that modules come from, instead of those beside the program; may be given more than once")
        ->type_name("DIR")
        ->allow_extra_args(false)
        ->take_all();
    application.add_flag("--list-modules", options.listModules,
                         "Print kind, name, version, core version, description and file of each module");
    CLI::Option * const trust = application.add_flag(
        "--trust", options.trust, "Load modules that the document names from anywhere: that runs the code in them");
    application.add_flag("--no-modules", options.noModules, "Open the document without loading any module")
        ->excludes(trust);
    declareFrameOptions(application, options.frame);
    application.final_callback([&options] {
        if (options.session.empty() && !options.listModules && !options.evaluate) {
            throw CLI::RequiredError("session");
        }
    });
    application.footer("The properties of an object whose name holds points are found by the longest object name that "
                       "exists.\nExample: tesseralis data/session.xml --set 'study.Slice thickness=2.5' --list");
}

std::string textOf(Variant const & value, bool json)
{
    return json ? value.GetJSON(false) : value.IsDefined() ? value.operator std::string() : std::string();
}

void change(Options const & options)
{
    std::unique_ptr<Watcher> const watcher =
        options.watch ? std::make_unique<Watcher>(GetOutput(), options.GetScope()) : nullptr;
    for (std::string const & assignment : options.assignments) {
        setProperty(assignment);
    }
}

std::string evaluate(Options const & options, Modules const & modules)
{
    std::unique_ptr<Watcher> const watcher =
        options.watch ? std::make_unique<Watcher>(GetOutput(), options.GetScope()) : nullptr;
    Variant const result = HostConsole::find(modules).evaluate(*options.evaluate);
    return result.IsDefined() ? toLine(result) + "\n" : std::string();
}

void run(Options const & options)
{
    LogRedirection const redirection;
    Modules const modules(options.moduleFolders, options.GetTrust());
    ModuleGuard::SetTest([&](std::string const & filename) { return modules.IsTrusted(filename); });
    if (options.listModules) {
        modules.print(GetOutput());
    }
    registerObjectTypes();
    Tesseralis::Get().registerObjectType(HostConsole::GetTypeName(), &HostConsole::createObject);
    Tesseralis::Get().registerObjectType(HostViewer::GetTypeName(), &HostViewer::createObject);
    std::unique_ptr<Follower> const follower =
        options.follow ? std::make_unique<Follower>(options.session, options.GetScope()) : nullptr;
    std::optional<Frame> frame;
    if (options.frame.filename) {
        frame.emplace(options.frame);
    }
    Document document(modules);
    if (!options.session.empty()) {
        document.load(options.session);
    }

    change(options);
    std::string const result = options.evaluate ? evaluate(options, modules) : std::string();
    if (frame) {
        frame->draw();
    }
    std::string const value =
        options.get ? textOf(PropertyPath(*options.get).GetValue(), options.json) + "\n" : std::string();
    if (options.list) {
        printObjects(GetOutput());
    }
    GetOutput() << result << value;
    flushOutput();
    if (frame) {
        frame->write();
    }
    if (follower) {
        follower->run(document, [&] {
            if (frame) {
                frame->draw();
                frame->write();
            }
        });
    }
    if (follower && options.save) {
        follower->prepareSaving(document, *options.save);
    }
    if (options.save) {
        document.save(*options.save);
    }
    ModuleGuard::SetTest(nullptr); // the objects stay to the end of the process, the folders don't
}

int main(int argc, char ** argv)
{
    std::signal(SIGXFSZ, SIG_IGN); // a file that gets too large is an error like others
    CLI::App application("Loads a session document, changes properties, and lists, watches and saves what is there.",
                         "tesseralis");
    Options options;
    declareOptions(application, options);
    try {
        application.parse(argc, argv);
    } catch (CLI::ParseError const & error) {
        if (error.get_exit_code() == 0) {
            return application.exit(error);
        }
        std::cerr << "tesseralis: " << asMessage(error.what()) << " (--help tells more)\n";
        return 1;
    }

    try {
        run(options);
    } catch (Exception const & exception) {
        std::cerr << "tesseralis: " << asMessage(exception.GetMessage()) << "\n";
        return 1;
    } catch (std::bad_alloc const &) {
        std::cerr << "tesseralis: There is not enough memory.\n";
        return 1;
    } catch (std::exception const & exception) {
        std::cerr << "tesseralis: " << asMessage(exception.what()) << "\n";
        return 1;
    }
    return 0;
}
} // namespace
} // namespace tesseralis::host

int main(int argc, char ** argv)
{
    return tesseralis::host::main(argc, argv);
}
