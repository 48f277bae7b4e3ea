#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "orca/ClassInfo.h"
#include "orca/HostObject.h"
#include "orca/Name.h"
#include "support/Export.h"

namespace orca {

/// The classes of a namespace while a callback fills it.
class QUILLON_EXPORT COSNamespace {
 public:
    explicit COSNamespace(std::string name) : name_(std::move(name)) {}

    const std::string& getName() const { return name_; }

    /// Adds one class; the order of the calls is the order in which the host lists the classes.
    template <typename Info>
    void addClass()
    {
        classes_.push_back(std::make_unique<Info>());
    }

 private:
    friend class ClassRegistry;

    std::string name_;
    std::vector<std::unique_ptr<factory::ClassInfo>> classes_;
};

/// All registered classes. It lives as long as the process and only grows; classes are registered while no
/// other thread uses the host system.
class QUILLON_EXPORT ClassRegistry {
 public:
    static ClassRegistry& instance();

    /// Null for an unknown name.
    const factory::ClassInfo* findClass(std::string_view name) const;
    /// Throws: Error for an unknown name.
    const factory::ClassInfo& requireClass(std::string_view name) const;
    /// The class of that name, otherwise the most derived one that `object` belongs to; null for none.
    const factory::ClassInfo* findClassOf(internal::Name name,
                                          const factory::full::StdShareable* object) const;
    /// In the order of their registration.
    const std::vector<const factory::ClassInfo*>& getClasses() const { return inOrder_; }
    const std::vector<std::string>& getNamespaces() const { return namespaces_; }

    /// Takes over the classes of a namespace; a superclass may come after a class that names it, or never.
    /// Throws: Error when the namespace or a class is registered already; nothing is added then.
    void add(COSNamespace&& added);

 private:
    void requireNew(const COSNamespace& added) const;

    std::vector<std::string> namespaces_;
    std::vector<std::unique_ptr<factory::ClassInfo>> classes_;
    std::vector<const factory::ClassInfo*> inOrder_;
    std::unordered_map<std::string_view, const factory::ClassInfo*> byName_;
};

namespace factory {

/// Makes a namespace known to the host: calls `populate` to fill it, then registers its classes.
/// Throws: what `populate` throws, and as ClassRegistry::add; nothing is registered then.
QUILLON_EXPORT void registerOrcaNamespace(const std::string& name, void (*populate)(COSNamespace*));

}  // namespace factory
}  // namespace orca
