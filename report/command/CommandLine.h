#pragma once

#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "report/command/Argument.h"

namespace quillon::report {

/// Says that options are unknown, missing or out of place.
class UsageError : public std::runtime_error {
 public:
    using std::runtime_error::runtime_error;
};

/// What the author typed: the options that are known, with their values, and the words that stand alone, in
/// order.
class CommandLine {
 public:
    struct Word {
        /// Null for a word that stands alone.
        const Argument* argument;
        std::string text;
    };

    /// `arguments` must outlive the command line.
    /// Throws: UsageError for an option that is unknown, lacks its value or is given too often;
    /// std::runtime_error for a value that is not in UTF-8.
    CommandLine(std::span<const Argument> arguments, const std::vector<std::string>& words);

    bool has(const std::string& name) const;
    /// The value of an option; the last where it is repeatable, empty where it is not given.
    std::string get(const std::string& name) const;
    std::vector<std::string> getAll(const std::string& name) const;
    const std::vector<Word>& getWords() const { return words_; }
    /// The words that stand alone.
    std::vector<std::string> getFiles() const;

 private:
    const std::string& takeValue(const Argument& argument, const std::string& word) const;
    const Argument* findKnown(const std::string& word) const;
    const Argument& find(const std::string& word) const;
    void requireOnce() const;
    void requireUtf8() const;

    std::span<const Argument> arguments_;
    std::vector<Word> words_;
};

}  // namespace quillon::report
