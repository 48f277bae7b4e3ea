#pragma once

#include <filesystem>
#include <string>

#include "report/command/JobForm.h"
#include "report/command/JsonTree.h"
#include "report/command/Output.h"

namespace quillon::report {

/// A job file that is right in itself: what its members say is allowed, and the files that it names are
/// there.
struct Job {
    std::string path;
    /// Of the job file; the files that it names are from here on.
    std::filesystem::path folder;
    JobText source;
    JsonNode tree;
};

/// How a job is done.
struct JobOptions {
    Output output;
    /// Whether nothing is written.
    bool isCheck = false;
    /// Whether what was done is told as JSON.
    bool asJson = false;
};

/// Reads a job file; "-" is standard input. A job file is trusted like a script: it reads any file that it
/// names. Throws: std::runtime_error with a line for each mistake: file, line, column and sentence.
Job readJob(const std::string& path);

/// Makes the document of the job, or one for each group. Prints what was filled.
/// Throws: std::runtime_error, UsageError.
void runJob(const Job& job, const JobOptions& options);

}  // namespace quillon::report
