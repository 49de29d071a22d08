// The command line in German: help texts, errors, version.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace ox {

/// Status with which a program ends that was called in a wrong way.
constexpr int kWrongUse = 2;

/// The help of a program, or of one of its commands: `app` has a name, and a description unless what it does
/// need not be told. An option shows its type name as the name of its value.
std::string GermanHelp(const CLI::App& app);

/// What is wrong with a command line that `app` has read; UTF-8, without a line end. An error that a check of
/// an option has thrown is told in the check's own words behind the option's name.
std::string GermanError(const CLI::App& app, const CLI::ParseError& error);

/// What is wrong with the first word that nothing has taken; empty when `app` has understood all.
std::string UnknownWord(const CLI::App& app);

/// "NAME 4.0.0 (commit)".
std::string VersionLine(const std::string& program);

}  // namespace ox
