#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <string_view>

namespace quillon::report {

/// A sum that keeps what each addition rounds off (Neumaier's method): 1,300 times 999.99 is 1299987.
class Sum {
 public:
    void add(double value)
    {
        const double next = sum_ + value;
        lost_ += std::abs(sum_) >= std::abs(value) ? (sum_ - next) + value : (value - next) + sum_;
        sum_ = next;
    }

    double get() const { return std::isfinite(sum_) ? sum_ + lost_ : sum_; }

 private:
    double sum_ = 0;
    double lost_ = 0;
};

/// Several values that become one. Values that are not a number count for nothing.
class Accumulator {
 public:
    void add(double value)
    {
        if (std::isnan(value)) return;
        sum_.add(value);
        least_ = count_ == 0 ? value : std::min(least_, value);
        most_ = count_ == 0 ? value : std::max(most_, value);
        ++count_;
    }

    /// Aggregate: count, mean, min or max; anything else is the sum. Not a number when nothing was added, but
    /// for the count.
    double get(std::string_view aggregate) const
    {
        if (aggregate == "count") return static_cast<double>(count_);
        if (count_ == 0) return std::numeric_limits<double>::quiet_NaN();
        if (aggregate == "mean") return sum_.get() / static_cast<double>(count_);
        if (aggregate == "min") return least_;
        return aggregate == "max" ? most_ : sum_.get();
    }

 private:
    Sum sum_;
    double least_ = 0;
    double most_ = 0;
    std::size_t count_ = 0;
};

}  // namespace quillon::report
