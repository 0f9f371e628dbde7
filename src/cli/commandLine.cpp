#include "cli/commandLine.h"

#include "cli/commands.h"
#include "platform/base/codepages.h"
#include "platform/base/paths.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <unistd.h>

namespace cli {
namespace {

struct WrongUsage {
    std::string message;
};

// What stands behind the command on the command line: names are bytes of the system.
struct Arguments {
    std::string mainFile, transFile, edits, name;
    std::optional<std::string> codePage, failUnder;
    bool untranslated = false, json = false, keepEmpty = false, dryRun = false, copy = false;

    [[nodiscard]] Pair pair() const {
        return {platform::pathFromSystem(mainFile), platform::pathFromSystem(transFile)};
    }
};

// A page that was asked for and is not known would garble what is read and saved, so it is refused
// from wherever it comes. The option overrides the environment.
void chooseCodePage(const std::optional<std::string>& option) {
    const auto refuse = [](const std::string& source, const std::string& page) {
        throw WrongUsage{source + ": '" + page + "' is no known code page"};
    };
    if (option) {
        const auto page = platform::codePageNumbered(*option);
        if (!page) refuse("--code-page", *option);
        platform::setAnsiCodePage(page);
    } else if (const auto page = platform::unusableCodePageVariable(); !page.empty()) {
        refuse(platform::kCodePageVariable, page);
    }
}

std::optional<Percent> failUnder(const Arguments& arguments) {
    if (!arguments.failUnder) return std::nullopt;
    std::optional<Percent> percent = Percent::parse(*arguments.failUnder);
    if (!percent) {
        throw WrongUsage{"--fail-under: '" + *arguments.failUnder + "' is no percentage"};
    }
    return percent;
}

using Command = std::function<ExitCode(Output&)>;

// Tells CLI11 of all commands. `chosen` is set by the one that is given; it refers to `arguments`.
void describe(CLI::App& app, Arguments& arguments, Command& chosen) {
    app.set_version_flag("--version", "quillmere-cli " QUILLMERE_VERSION);
    app.add_option("--code-page", arguments.codePage,
                   "Windows code page of files without a byte order mark")
        ->type_name("N");
    app.require_subcommand(1);
    app.fallthrough();  // --code-page may stand behind the command, too
    app.footer("MAIN is the complete language file, TRANSLATED the one that is worked on.\n"
               "Exit codes: 0 done; 1 the check or the edits failed; 2 wrong usage; "
               "3 a file could not be read or written.");

    Arguments& a = arguments;
    const auto command = [&](const char* name, const char* description, Command run) {
        CLI::App* const sub = app.add_subcommand(name, description);
        sub->parse_complete_callback([&chosen, run = std::move(run)] { chosen = run; });
        sub->add_option("MAIN", a.mainFile)->required()->type_name("");
        return sub;
    };
    const auto pairCommand = [&](const char* name, const char* description, Command run) {
        CLI::App* const sub = command(name, description, std::move(run));
        sub->add_option("TRANSLATED", a.transFile)->required()->type_name("");
        return sub;
    };
    const auto keepEmpty = [&](CLI::App* sub) {
        sub->add_flag("--keep-empty", a.keepEmpty, "Keep keys that have no translation");
    };

    CLI::App* sub = pairCommand("rows", "Print the rows of the list", [&a](Output& out) {
        return rows({a.pair(), a.untranslated, a.json}, out);
    });
    sub->add_flag("--untranslated", a.untranslated, "Only those empty or the same as the default");
    sub->add_flag("--json", a.json, "One JSON object a row");

    sub = pairCommand("status", "Count what is translated", [&a](Output& out) {
        return status({a.pair(), a.json, failUnder(a)}, out);
    });
    sub->add_flag("--json", a.json, "Counts as JSON");
    sub->add_option("--fail-under", a.failUnder, "Exit with 1 when less is translated")
        ->type_name("PERCENT");

    sub = pairCommand("fill", "Fill empty translations from rows with the same default",
                      [&a](Output& out) {
                          return fill({a.pair(), a.keepEmpty, a.dryRun}, out);
                      });
    keepEmpty(sub);
    sub->add_flag("--dry-run", a.dryRun, "Only count");

    sub = pairCommand("apply", "Change translations and save", [&a](Output&) {
        return apply({a.pair(), a.edits, a.keepEmpty});
    });
    sub->add_option("EDITS", a.edits,
                    "JSON Lines of {\"section\":\"\",\"key\":\"\",\"translation\":\"\"}; "
                    "- is standard input")
        ->required()
        ->type_name("");
    keepEmpty(sub);

    sub = pairCommand("merge", "Save the list into the translated file as it is", [&a](Output&) {
        return merge({a.pair(), a.keepEmpty});
    });
    keepEmpty(sub);

    sub = command("new", "Make a new translation file beside the main file", [&a](Output&) {
        return newFile(
            {platform::pathFromSystem(a.mainFile), platform::pathFromSystem(a.name), a.copy});
    });
    sub->add_option("NAME", a.name, "Directory and extension are those of MAIN")
        ->required()
        ->type_name("");
    sub->add_flag("--copy", a.copy, "As a copy of the main file, not empty");
}

ExitCode runChosen(int argc, const char* const* argv, Output& out) {
    CLI::App app("Translate key=value language files.", "quillmere-cli");
    Arguments arguments;
    Command chosen;
    describe(app, arguments, chosen);
    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
        out.bytes(app.help());
        return kDone;
    } catch (const CLI::CallForVersion& version) {
        out.bytes(version.what());
        out.bytes("\n");
        return kDone;
    } catch (const CLI::ParseError& error) {
        const std::vector<std::string> unknown = app.remaining();
        if (app.get_subcommands().empty() && !unknown.empty()) {
            throw WrongUsage{"there is no command '" + unknown.front() + "'"};
        }
        throw WrongUsage{error.what()};
    }
    chooseCodePage(arguments.codePage);
    return chosen(out);
}

}  // namespace

ExitCode run(int argc, const char* const* argv) {
    Output out(STDOUT_FILENO);
    ExitCode exitCode = kFileFailed;
    try {
        exitCode = runChosen(argc, argv, out);
    } catch (const WrongUsage& wrong) {
        say(fromUtf8(wrong.message) + u" (--help tells more)");
        exitCode = kWrongUsage;
    } catch (const Stop& stop) {
        say(stop.sMessage, stop.sFile);
        exitCode = stop.exitCode;
    } catch (const Refused& refused) {
        say(refused.message);
        exitCode = kWrongUsage;
    } catch (const FileFailure& failure) {
        say(failure.message, failure.sFile);
    } catch (const Failure& failure) {
        say(failure.message);
    } catch (const std::exception& error) {  // no memory left
        say(fromUtf8(error.what()));
    }
    if (!out.finish()) {
        say(u"Error writing file", u"standard output");
        exitCode = kFileFailed;
    }
    return exitCode;
}

}  // namespace cli
