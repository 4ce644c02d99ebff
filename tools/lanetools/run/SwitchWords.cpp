// SPDX-License-Identifier: MIT
#include "lanetools/run/SwitchWords.h"

#include <algorithm>
#include <cstdint>
#include <span>

namespace lanetools {

namespace {

std::vector<const char*> Arguments(const std::vector<std::string>& words) {
    std::vector<const char*> arguments{""};  // in the place of the program's name
    for (const std::string& word : words)
        arguments.push_back(word.c_str());
    return arguments;
}

std::string NameOf(Switch id) {
    return std::string(AllSwitches()[static_cast<std::size_t>(id)].name);
}

// An empty word counts as no parameter.
bool HasParameter(const CParsedSwitch& given) {
    return !given.parameters.empty() && !given.parameters.front().empty();
}

void Append(const CParsedSwitch& given, std::vector<std::string>& words) {
    words.push_back(given.name);
    words.insert(words.end(), given.parameters.begin(), given.parameters.end());
}

std::vector<std::string> WordsOf(const std::vector<CParsedSwitch>& switches, bool hasBaseCall) {
    std::vector<std::string> words;
    if (!hasBaseCall) words.push_back(NameOf(Switch::BaseCall));
    for (const CParsedSwitch& given : switches)
        Append(given, words);
    return words;
}

}  // namespace

CSwitchWords::CSwitchWords(const std::vector<std::string>& words)
    : CCommandLine(static_cast<int>(words.size()) + 1, Arguments(words).data(), SwitchNames()) {}

bool CSwitchWords::Has(Switch id) const {
    return std::any_of(switches.begin(), switches.end(),
                       [&](const CParsedSwitch& given) { return IsSwitch(given.name, id); });
}

std::vector<std::string> CSwitchWords::Libraries() const {
    std::vector<std::string> libraries;
    for (const CParsedSwitch& given : switches)
        if (IsSwitch(given.name, Switch::BaseCall) && HasParameter(given))
            libraries.insert(libraries.end(), given.parameters.begin(), given.parameters.end());
    return libraries;
}

std::vector<std::string> CSwitchWords::FilesOf(Switch id) const {
    std::vector<std::string> named;
    for (const CParsedSwitch& given : switches)
        if (IsSwitch(given.name, id) && HasParameter(given)) named.push_back(given.parameters.front());
    return named;
}

std::size_t CSwitchWords::Operations() const {
    std::size_t count = 1;
    for (const CParsedSwitch& given : switches)
        if (const CSwitch* const row = FindSwitch(given.name); row && row->step) ++count;
    return count;
}

std::vector<std::string> CSwitchWords::Words() const {
    return WordsOf(switches, Has(Switch::BaseCall));
}

std::vector<std::string> CSwitchWords::WordsToGoOn(const std::vector<std::string>& libraries) const {
    std::vector<CParsedSwitch> changed = switches;
    bool areNamed = false;
    for (CParsedSwitch& given : changed) {
        if (IsSwitch(given.name, Switch::Fasta) && HasParameter(given)) given.name = NameOf(Switch::FastaAppended);
        if (!IsSwitch(given.name, Switch::BaseCall)) continue;
        given.parameters = areNamed ? std::vector<std::string>() : libraries;
        areNamed = true;
    }
    return WordsOf(changed, areNamed);
}

std::size_t MostParameters(Switch id) {
    switch (id) {
        case Switch::BaseCall:
            return SIZE_MAX;
        case Switch::BaseOrder:
        case Switch::Fasta:
        case Switch::FastaAppended:
            return 1;
        default:
            return 0;
    }
}

}  // namespace lanetools
