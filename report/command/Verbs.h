#pragma once

#include <span>
#include <string>
#include <vector>

#include "report/command/Argument.h"
#include "report/command/CommandLine.h"

namespace quillon::report {

/// What the command can do. Parsing, help, the man page and completion follow from these rows.
struct Verb {
    /// The first word; empty for making a document of tables.
    const char* name;
    /// What stands behind the name.
    const char* usage;
    /// One line for the author.
    const char* summary;
    /// Sentences below the summary.
    const char* details;
    /// Lines of commands.
    const char* examples;
    const std::vector<Argument>& (*getArguments)();
    void (*run)(const CommandLine& commandLine);
};

/// The first makes a document of tables.
std::span<const Verb> getVerbs();

/// The verb of that name; the first for a word that may be a table.
/// Throws: UsageError for one that is neither.
const Verb& findVerb(const std::string& word);

// What the verbs do. Throws: UsageError, and std::runtime_error with a sentence.
void makeDocument(const CommandLine& commandLine);
void listCharts(const CommandLine& commandLine);
void extractData(const CommandLine& commandLine);
void fillDocument(const CommandLine& commandLine);
void writeExampleJob(const CommandLine& commandLine);

}  // namespace quillon::report
