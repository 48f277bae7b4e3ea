#pragma once

#include <filesystem>
#include <functional>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include "report/command/JsonTree.h"

namespace quillon::report {

struct Form;

struct FormMember {
    std::string name;
    const Form* form;
    std::string help = {};
    bool isRequired = false;
};

/// What a value of a job file may be. Checking and the schema follow from one tree of these.
struct Form {
    enum class Kind : unsigned char {
        Text,
        /// The path of a file that is there, from the job file's folder on.
        Path,
        Flag,
        Number,
        Integer,
        /// An object whose members are texts with names of the author's.
        Texts,
        List,
        Object,
        /// Any of the alternatives; which one shows in the kind of the value.
        Any,
        /// An object of one of the alternatives; which one shows in the first member that it requires.
        Choice
    };

    Kind kind;
    /// In sentences: "a text".
    std::string what;
    /// Of the schema's definition; empty for one that stands in line.
    std::string name = {};
    std::vector<std::string> choices = {};
    bool ignoresCase = false;
    double minimum = -std::numeric_limits<double>::infinity();
    double maximum = std::numeric_limits<double>::infinity();
    const Form* items = nullptr;
    std::vector<FormMember> members = {};
    std::vector<const Form*> alternatives = {};
    /// What else holds for a value that is right so far. Throws: std::runtime_error with a sentence.
    std::function<void(const JsonNode&)> check = nullptr;
};

/// What is wrong with a value, and where.
struct Problem {
    std::size_t position;
    std::string sentence;
};

/// Everything that is wrong with a value; paths are from `folder` on.
std::vector<Problem> findProblems(const JsonNode& node, const Form& form,
                                  const std::filesystem::path& folder);

/// The text of a job file, and its name in sentences.
struct JobText {
    std::string text;
    std::string name;
};

/// Throws: std::runtime_error with a line for each problem, the first 50: file, line, column and sentence.
void requireNoProblems(const std::vector<Problem>& problems, const JobText& source);

/// Does `work`; what it refuses is said of that position of the job file. Throws: as requireNoProblems.
template <typename Work>
void requireDone(std::size_t position, const JobText& source, const Work& work)
{
    std::vector<Problem> problems;
    try {
        work();
    } catch (const std::runtime_error& error) {
        problems.push_back({position, error.what()});
    }
    requireNoProblems(problems, source);
}

/// A JSON schema of the form, for editors.
std::string describeSchema(const Form& form, const std::string& title);

/// The form of a whole job file.
const Form& getJobForm();

/// The references of a job, which is right so far, to captions that are not there.
std::vector<Problem> findLostReferences(const JsonNode& job);

}  // namespace quillon::report
