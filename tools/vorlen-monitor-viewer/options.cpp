#include "tools/vorlen-monitor-viewer/options.h"

#include "tools/vorlen-monitor/failure.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace vorlen::viewer {

namespace {

constexpr const char* program = "vorlen-monitor-viewer";

std::string oneLine(std::string text) {
    std::ranges::replace(text, '\n', ' ');
    return text;
}

tool::Failure refusal(const std::string& problem) {
    return {tool::ExitCode::usage, problem + "; see " + program + " --help"};
}

} // namespace

bool askForPicture(const std::vector<std::string>& arguments) {
    return std::ranges::any_of(arguments, [](const std::string& argument) {
        return argument == "--picture" || argument.starts_with("--picture=");
    });
}

Options parseOptions(const std::vector<std::string>& arguments) {
    Options options;
    CLI::App app("Shows monitors, windows and findings as the monitor library sees them.", program);
    app.add_option("--replay", options.replay, "Show the desktop of a recording")
        ->type_name("FILE");
    app.add_option("--picture", options.picture, "Draw the window into a PNG file, and end")
        ->type_name("FILE");
    app.add_option("--kit-model", options.kitModels, "The name of another kit model (repeatable)")
        ->type_name("NAME")
        ->expected(1)
        ->allow_extra_args(false)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    app.set_help_flag("-h,--help", "Show this help");
    app.footer("Exit status: 0 success; 2 wrong command line or recording; 3 libraries unusable;\n"
               "4 picture not written; 5 other error.");
    app.allow_windows_style_options(false);
    app.allow_extras();
    try {
        // CLI11 takes the arguments from the end of the vector.
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::CallForHelp&) {
        options.help = app.help();
        return options;
    } catch (const CLI::ParseError& error) {
        throw refusal(oneLine(error.what()));
    }
    if (const std::vector<std::string> rest = app.remaining(); !rest.empty()) {
        throw refusal(
            (rest.front().starts_with('-') ? "unknown option \"" : "unexpected argument \"") +
            rest.front() + "\"");
    }
    return options;
}

} // namespace vorlen::viewer
