#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace quillon::report {

/// What is read when it is first asked for, and kept from then on. Threads may ask at once: the others wait
/// for the one that reads. What could not be read is tried again the next time.
template <typename Value>
class Kept {
 public:
    /// Read: returns a `std::shared_ptr<const Value>`.
    template <typename Read>
    std::shared_ptr<const Value> get(const Read& read)
    {
        const std::scoped_lock lock(mutex_);
        if (!value_) value_ = read();
        return value_;
    }

 private:
    std::mutex mutex_;
    std::shared_ptr<const Value> value_;
};

/// The same for several of a kind, by name: while one is read, others can be asked for. When there is no room
/// for more, they are read each time.
template <typename Value>
class KeptByName {
 public:
    /// Room: for the sizes of all together.
    explicit KeptByName(std::size_t room = 0) : room_(room) {}

    template <typename Read>
    std::shared_ptr<const Value> get(const std::string& name, const Read& read, std::size_t size = 0)
    {
        auto* const kept = find(name, size);
        return kept == nullptr ? read() : kept->get(read);
    }

 private:
    Kept<Value>* find(const std::string& name, std::size_t size)
    {
        const std::scoped_lock lock(mutex_);
        if (const auto known = values_.find(name); known != values_.end()) return &known->second;
        if (size > room_) return nullptr;
        room_ -= size;
        return &values_[name];
    }

    std::mutex mutex_;
    std::size_t room_;
    std::map<std::string, Kept<Value>> values_;
};

}  // namespace quillon::report
