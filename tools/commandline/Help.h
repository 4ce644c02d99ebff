// SPDX-License-Identifier: MIT
// The form of the tools' help (sections without empty lines, defaults in brackets after the text), and reading a
// command line with it.
#pragma once

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>

namespace commandline {

class CHelpFormatter : public CLI::Formatter {
  public:
    CHelpFormatter() { column_width(28); }

    std::string make_usage(const CLI::App* app, std::string name) const override {
        std::string line = "\nUsage: " + name;
        for (const CLI::Option* option :
             app->get_options([](const CLI::Option* one) { return one->get_positional() && one->get_required(); }))
            line += " " + option->get_type_name() + (option->get_items_expected_max() > 1 ? "..." : "");
        return line + " [OPTIONS]\n\n";
    }
    std::string make_positionals(const CLI::App*) const override { return ""; }
    std::string make_group(std::string group, bool, std::vector<const CLI::Option*> options) const override {
        std::string text = group + ":\n";
        for (const CLI::Option* option : options)
            text += make_option(option, false);
        return text;
    }
    std::string make_option_opts(const CLI::Option* option) const override {
        return option->get_items_expected_max() == 0 ? "" : " " + option->get_type_name();
    }
    std::string make_option_desc(const CLI::Option* option) const override {
        const bool hasDefault = option->get_items_expected_max() != 0 && !option->get_default_str().empty();
        return option->get_description() + (hasDefault ? " [" + option->get_default_str() + "]" : "");
    }
    // In the list of subcommands each has the first line of its description.
    std::string make_subcommand(const CLI::App* app) const override {
        const std::string about = app->get_description();
        std::stringstream line;
        CLI::detail::format_help(line, app->get_name(), about.substr(0, about.find('\n')), get_column_width());
        return line.str();
    }
    std::string make_footer(const CLI::App* app) const override { return app->get_footer() + "\n"; }
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
