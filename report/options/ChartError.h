#pragma once

#include <stdexcept>
#include <string>

#include "support/Export.h"

namespace quillon::report {

/// Says what in a chart cannot be written. Whoever knows the chart's number puts it in front of the place.
class QUILLON_EXPORT ChartError : public std::runtime_error {
 public:
    /// Place: "series 1 (\"North\"), point 2"; empty for the chart as a whole.
    ChartError(std::string place, std::string sentence)
        : std::runtime_error(place.empty() ? sentence : place + ": " + sentence),
          place_(std::move(place)),
          sentence_(std::move(sentence))
    {
    }

    const std::string& getPlace() const noexcept { return place_; }
    const std::string& getSentence() const noexcept { return sentence_; }

 private:
    std::string place_;
    std::string sentence_;
};

}  // namespace quillon::report
