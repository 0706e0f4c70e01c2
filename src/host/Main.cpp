#include "Document.h"
#include "Listing.h"
#include "PropertyPath.h"
#include "Watcher.h"

#include "object/Exception.h"
#include "object/Tesseralis.h"
#include "object/Version.h"
#include "value/Variant.h"

#include <CLI/CLI.hpp>

#include <exception>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace tesseralis::host {
namespace {
struct Options
{
    std::string session;
    std::vector<std::string> assignments;
    std::string get;
    std::string save;
    bool list = false;
    bool json = false;
    bool watch = false;
};

void declareOptions(CLI::App & application, Options & options)
{
    application.set_version_flag("--version", "tesseralis " + Tesseralis::Get().GetVersion().GetString());
    application.add_option("session", options.session, "The session document to load")
        ->required()
        ->type_name("SESSION.xml");
    application
        .add_option("--set", options.assignments,
                    "Set a property from a text; may be given more than once, in order. Limits hold, options "
                    "select, file names are split at ';'")
        ->type_name("OBJECT.PROPERTY=TEXT")
        ->expected(1)
        ->take_all()
        ->trigger_on_parse(false);
    application.add_flag("--list", options.list,
                         "Print all objects (type, name) and their properties (name, type, value, limits, hidden)");
    CLI::Option * const get =
        application.add_option("--get", options.get, "Print one value as text")->type_name("OBJECT.PROPERTY");
    application.add_flag("--json", options.json, "Print the value of --get as JSON, with its type and limits")
        ->needs(get);
    application.add_flag("--watch", options.watch, "Print every event while the changes are made");
    application
        .add_option("--save", options.save,
                    "Save all objects to a document; the old file stays whole until the new one is complete")
        ->type_name("OUT.xml");
    application.footer("The properties of an object whose name holds points are found by the longest object name that "
                       "exists.\nExample: tesseralis data/session.xml --set 'study.Slice thickness=2.5' --list");
}

std::string textOf(Variant const & value, bool json)
{
    return json ? value.GetJSON(false) : value.IsDefined() ? value.operator std::string() : std::string();
}

void run(Options const & options)
{
    registerObjectTypes();
    Document document;
    document.load(options.session);

    std::unique_ptr<Watcher> watcher = options.watch ? std::make_unique<Watcher>(std::cout) : nullptr;
    for (std::string const & assignment : options.assignments) {
        setProperty(assignment);
    }
    watcher.reset();

    std::string const value =
        options.get.empty() ? std::string() : textOf(PropertyPath(options.get).GetValue(), options.json) + "\n";
    if (options.list) {
        printObjects(std::cout);
    }
    std::cout << value << std::flush;
    if (!options.save.empty()) {
        document.save(options.save);
    }
}

int main(int argc, char ** argv)
{
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
        std::cerr << "tesseralis: " << error.what() << " (--help tells more)\n";
        return 1;
    }

    try {
        run(options);
    } catch (Exception const & exception) {
        std::cerr << "tesseralis: " << exception << "\n";
        return 1;
    } catch (std::exception const & exception) {
        std::cerr << "tesseralis: " << exception.what() << "\n";
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
