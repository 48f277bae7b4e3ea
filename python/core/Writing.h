#pragma once

#include <memory>
#include <unordered_set>
#include <vector>

#include "chart/model/Object.h"
#include "orca/HostObject.h"

namespace quillon::python {

/// Keeps Python code, on whatever thread, from changing what is being written: a document, and the charts and
/// data sets in it with all that they hold. Made and destroyed under the interpreter's lock.
class Writing {
 public:
    using Roots = std::vector<std::shared_ptr<const chart::Object>>;

    /// Document: any address that stands for it, or null.
    explicit Writing(Roots roots, const void* document = nullptr);
    ~Writing();
    Writing(const Writing&) = delete;
    Writing& operator=(const Writing&) = delete;

    /// Whether anything is being written.
    static bool isAny();
    /// Throws: Refused when a document is being written.
    static void requireNone(const void* document);
    /// Throws: Refused when an object belongs to a chart that is being written. Costs next to nothing when
    /// nothing is being written.
    static void requireNone(const orca::HostObject& host);

 private:
    bool holds(const void* object);

    Roots roots_;
    const void* document_;
    /// All objects that the roots hold; made when it is first asked for, since most writings are never asked.
    std::unordered_set<const void*> objects_;
};

}  // namespace quillon::python
