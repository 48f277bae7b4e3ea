#pragma once

#include <unistd.h>

#include <utility>

namespace quillon::report {

/// An open file that closes itself; -1 is none.
class Descriptor {
 public:
    explicit Descriptor(int number = -1) noexcept : number_(number) {}
    ~Descriptor() { static_cast<void>(closeNow()); }
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        std::swap(number_, other.number_);
        return *this;
    }

    int get() const noexcept { return number_; }
    bool isOpen() const noexcept { return number_ >= 0; }
    /// False, and errno, when bytes may be lost.
    bool closeNow() noexcept
    {
        const int number = std::exchange(number_, -1);
        return number < 0 || ::close(number) == 0;
    }

 private:
    int number_;
};

}  // namespace quillon::report
