// SPDX-License-Identifier: MIT
// The form of the tools' help (sections without empty lines, defaults in brackets after the text), and reading a
// command line with it.
#pragma once

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstddef>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <utility>

namespace commandline {

// The text in lines of up to `width` characters. Lines that follow each other are one paragraph; an empty line
// separates two of them, and a line that begins with a blank stays as it is.
inline std::string Wrapped(const std::string& text, std::size_t width) {
    std::istringstream lines(text);
    std::string wrapped, word;
    std::size_t used = 0;  // of the last line; 0 if nothing may be added to it
    const auto begin = [&](const std::string& line) {
        wrapped += (wrapped.empty() ? "" : "\n") + line;
        used = line.size();
    };
    for (std::string line; std::getline(lines, line);) {
        if (line.empty() || line.front() == ' ') {
            begin(line);
            used = 0;
            continue;
        }
        std::istringstream words(line);
        while (words >> word) {
            if (used == 0 || used + 1 + word.size() > width)
                begin(word);
            else
                used += (wrapped += ' ' + word, 1 + word.size());
        }
    }
    return wrapped;
}

class CHelpFormatter : public CLI::Formatter {
  public:
    // `usageEnd` is what follows the options in the usage line.
    explicit CHelpFormatter(std::string usageEnd = "") : ending(std::move(usageEnd)) { column_width(column); }

    std::string make_description(const CLI::App* app) const override {
        return Wrapped(app->get_description(), width) + "\n";
    }
    std::string make_usage(const CLI::App* app, std::string name) const override {
        std::string line = "\nUsage: " + name + (app->get_require_subcommand_min() > 0 ? " SUBCOMMAND" : "");
        for (const CLI::Option* option :
             app->get_options([](const CLI::Option* one) { return one->get_positional() && one->get_required(); }))
            line += " " + option->get_type_name() + (option->get_items_expected_max() > 1 ? "..." : "");
        for (const CLI::Option* option :
             app->get_options([](const CLI::Option* one) { return !one->get_positional() && one->get_required(); })) {
            const bool isShort = !option->get_snames().empty();
            line += (isShort ? " -" + option->get_snames().front() : " --" + option->get_lnames().front()) +
                    make_option_opts(option);
        }
        return line + " [OPTIONS]" + ending + "\n\n";
    }
    std::string make_positionals(const CLI::App*) const override { return ""; }
    std::string make_group(std::string group, bool, std::vector<const CLI::Option*> options) const override {
        std::string text = group + ":\n";
        for (const CLI::Option* option : options)
            text += make_option(option, false);
        return text;
    }
    // Without what a check of the value says of itself, which follows a colon.
    std::string make_option_opts(const CLI::Option* option) const override {
        const std::string type = option->get_type_name();
        return option->get_items_expected_max() == 0 ? "" : " " + type.substr(0, type.find(':'));
    }
    std::string make_option_desc(const CLI::Option* option) const override {
        const bool hasDefault = option->get_items_expected_max() != 0 && !option->get_default_str().empty();
        return Wrapped(option->get_description() + (hasDefault ? " [" + option->get_default_str() + "]" : ""),
                       width - column);
    }
    // In the list of subcommands each has the first sentence of its description.
    std::string make_subcommand(const CLI::App* app) const override {
        const std::string about = Wrapped(app->get_description(), std::string::npos);
        std::stringstream line;
        const std::size_t end = std::min(about.find(". "), about.find(".\n"));
        const std::string sentence = about.substr(0, end == std::string::npos ? end : end + 1);
        CLI::detail::format_help(line, app->get_name(), Wrapped(sentence, width - column), get_column_width());
        return line.str();
    }
    std::string make_footer(const CLI::App* app) const override {
        return app->get_footer().empty() ? "" : Wrapped(app->get_footer(), width) + "\n";
    }

  private:
    static constexpr std::size_t width = 80, column = 28;

    std::string ending;
};

// Sets the variables of the options from the arguments. False if the program is to end at once; `exitCode` is then 0
// after --help, or 1 after a message on standard error.
inline bool Parse(CLI::App& app, int argc, const char* const* argv, int& exitCode) {
    app.formatter(std::make_shared<CHelpFormatter>());
    try {
        app.parse(argc, argv);
        return true;
    } catch (const CLI::ParseError& error) {
        exitCode = app.exit(error, std::cout, std::cerr) == 0 ? 0 : 1;
        return false;
    }
}

}  // namespace commandline
