#include <gtest/gtest.h>

#include "orca/Script.h"

namespace test {

/// The root of a small package of its own.
class Root : public orca::factory::full::StdShareable {
 public:
    ~Root() override { orca::factory::full::retract(this); }
    virtual const char* getFullyQualifiedOrcaTypeName() const { return "test.Root"; }
};

class Derived : public Root {
 public:
    explicit Derived(double number = 0) : number_(number) {}
    template <typename... Args>
    static std::shared_ptr<Derived> create(Args... args)
    {
        return std::make_shared<Derived>(args...);
    }

    double getNumber() const { return number_; }
    void setNumber(double number) { number_ = number; }
    std::shared_ptr<Derived> keep(std::shared_ptr<Derived> other)
    {
        other_ = std::move(other);
        return other_;
    }
    void clear() { other_ = nullptr; }
    std::u16string pick(bool /*truth*/) { return u"logical"; }
    std::u16string pick(double /*number*/) { return u"double"; }
    std::u16string pick(std::u16string /*text*/) { return u"text"; }

    const char* getFullyQualifiedOrcaTypeName() const override { return "test.Derived"; }

 private:
    double number_;
    std::shared_ptr<Derived> other_;
};

/// An object that the host holds by its own means, of a class that nobody registers.
class Held : public Derived {
 public:
    unsigned bindingState() const noexcept override { return 1; }
    const char* getFullyQualifiedOrcaTypeName() const override { return ""; }
};

constexpr const char* hostNameOf(std::type_identity<Root> /*type*/)
{
    return "test.Root";
}
constexpr const char* hostNameOf(std::type_identity<Derived> /*type*/)
{
    return "test.Derived";
}

/// Objects of this one report no name at all, whoever makes them.
class Unnamed : public Root {
 public:
    static std::shared_ptr<Unnamed> create() { return std::make_shared<Unnamed>(); }
    static std::shared_ptr<Unnamed> getOther(const Unnamed& /*self*/) { return create(); }
    const char* getFullyQualifiedOrcaTypeName() const override { return ""; }
};
constexpr const char* hostNameOf(std::type_identity<Unnamed> /*type*/)
{
    return "test.Unnamed";
}

// A class has the name that is stated for it, never that of its base.
static_assert(orca::factory::NamedForHost<Derived>);
static_assert(!orca::factory::NamedForHost<Held>);

template <typename Names, typename... Texts>
concept TakesNames = std::is_constructible_v<Names, Texts...>;
using TwoNames = orca::factory::impl::ArgumentNames<2>;
static_assert(TakesNames<TwoNames, const char*, const char*>);
static_assert(!TakesNames<TwoNames, const char*>);
static_assert(!TakesNames<TwoNames, const char*, const char*, const char*>);

template <typename C>
struct Info : orca::factory::StdShareableHandleClassInfo<Root> {
    explicit Info(std::string superclass)
        : StdShareableHandleClassInfo(orca::factory::hostName<C>().getText(), {std::move(superclass)}, "")
    {
    }
    bool isInstance(const orca::factory::full::StdShareable* object) const override
    {
        return dynamic_cast<const C*>(object) != nullptr;
    }
};

struct DerivedInfo : Info<Derived> {
    DerivedInfo() : Info("test.Root")
    {
        using orca::factory::overload;
        constructor<Derived>();
        constructor<Derived, double>({"number"});
        property<&Derived::getNumber, &Derived::setNumber>("Number", "");
        method<&Derived::keep>("keep", {"other"}, "");
        constexpr auto pickLogical = overload<bool>(&Derived::pick);
        constexpr auto pickDouble = overload<double>(&Derived::pick);
        constexpr auto pickText = overload<std::u16string>(&Derived::pick);
        method<pickLogical>("pick", {"truth"}, "");
        method<pickDouble>("pick", {"number"}, "");
        method<pickText>("pick", {"text"}, "");
    }
};

struct RootInfo : Info<Root> {
    RootInfo() : Info("test.Unknown") {}
};

struct UnnamedInfo : Info<Unnamed> {
    UnnamedInfo() : Info("test.Root")
    {
        constructor<Unnamed>();
        method<&Unnamed::getOther>("getOther", {}, "");
    }
};

}  // namespace test

namespace orca {
namespace {

using test::Derived;

/// Derived before base, and a base that nobody registers.
void populate(COSNamespace* added)
{
    added->addClass<test::DerivedInfo>();
    added->addClass<test::RootInfo>();
    added->addClass<test::UnnamedInfo>();
}

class Dispatch : public testing::Test {
 protected:
    static void SetUpTestSuite()
    {
        if (ClassRegistry::instance().getClasses().empty()) factory::registerOrcaNamespace("test", populate);
    }
    void TearDown() override { EXPECT_EQ(BindingRegistry::size(), 0); }
};

TEST_F(Dispatch, ResolvesSuperclassesThatComeLaterOrNever)
{
    const auto& derived = ClassRegistry::instance().requireClass("test.Derived");
    EXPECT_EQ(derived.getLineage().size(), 2);
    EXPECT_TRUE(derived.isA("test.Root"));
    EXPECT_TRUE(derived.isA("test.Unknown"));
    EXPECT_FALSE(derived.isA("test.Derive"));
    EXPECT_FALSE(derived.isHeterogeneous());
    auto array = omCreateORCAMatrix(1, 0, internal::makeInterned("test.Root"));
    EXPECT_THROW(omSetClassOfHeterogeneousArray(array, internal::makeInterned("test.Root")), Error);
}

TEST_F(Dispatch, TakesTheFirstFormThatMatches)
{
    const auto object = construct("test.Derived");
    EXPECT_EQ(call(object, "pick", {true}), HostArray(u"logical"));
    EXPECT_EQ(call(object, "pick", {1}), HostArray(u"double"));
    EXPECT_EQ(call(object, "pick", {u"x"}), HostArray(u"text"));
    EXPECT_THROW(call(object, "pick"), Error);
    EXPECT_THROW(call(object, "pick", {HostArray()}), Error);
}

TEST_F(Dispatch, TakesNoShareOfAnObjectThatTheHostHoldsByItself)
{
    const auto held = std::make_shared<test::Held>();
    auto object = construct("test.Derived");
    auto value = call(object, "keep", {HostArray(factory::HostType<std::shared_ptr<Derived>>::toHost(held))});
    object.getNative<Derived>()->clear();
    EXPECT_EQ(held.use_count(), 1);
    // Without a name of its own, an object is used as the nearest class that is known.
    EXPECT_EQ(value.describe(), "object without class name");
    set(value, "Number", 4);
    EXPECT_EQ(held->getNumber(), 4);
    value = {};
    EXPECT_EQ(held.use_count(), 1);
    EXPECT_EQ(BindingRegistry::size(), 1);
}

TEST_F(Dispatch, NamesItsErrors)
{
    const auto object = construct("test.Derived");
    try {
        get(object, "Nonsense");
        FAIL();
    } catch (const Error& error) {
        EXPECT_STREQ(error.getIdentifier(), "orca:unknownProperty");
        EXPECT_STREQ(error.at("here").getIdentifier(), "orca:unknownProperty");
    }
}

TEST_F(Dispatch, BindsOneToOne)
{
    const auto object = construct("test.Derived");
    const auto native = object.getNative<Derived>();
    const auto name = internal::makeInterned("test.Derived");
    HostObject other(name);
    EXPECT_THROW(BindingRegistry::announceForConstructor(*native, name, other, true), Error);
    const auto& form = *object.getOneObject().getClass()->getOwnConstructors().front();
    EXPECT_THROW(form.invoke(object.getOneObject(), {}), Error);
    EXPECT_EQ(object.getNative<Derived>(), native);
    const auto second = Derived::create();
    for (const auto& next : {native, second}) {
        BindingRegistry::announceForConstructor(*next, name, other, false);
        EXPECT_EQ(other.getObject(), next.get());
        EXPECT_EQ(BindingRegistry::size(), 1);
    }
    EXPECT_EQ(object.getNative<Derived>(), nullptr);
}

TEST_F(Dispatch, FindsTheClassOfAHostObjectAnewWhenItIsBoundAgain)
{
    const auto derived = Derived::create();
    const auto root = std::make_shared<test::Root>();
    const auto host = std::make_shared<HostObject>(internal::nullValue);
    BindingRegistry::announceForConstructor(*derived, internal::makeInterned("test.Derived"), *host, true);
    EXPECT_EQ(classOf(host).getName(), "test.Derived");
    // Under a name that is not registered, only the object itself tells the class.
    BindingRegistry::announceForConstructor(*root, internal::makeInterned("test.Other"), *host, false);
    EXPECT_EQ(classOf(host).getName(), "test.Root");
    BindingRegistry::remove(*root);
    EXPECT_EQ(classOf(host).getName(), "test.Root");
}

TEST_F(Dispatch, LeavesAnObjectWithoutNameWithoutOneHoweverItIsBound)
{
    const auto made = construct("test.Unnamed");
    const auto read = call(made, "getOther");
    for (const auto& object : {made, read}) {
        EXPECT_EQ(object.getOneObject().getClassName(), internal::nullValue);
        EXPECT_EQ(classOf(object).getName(), "test.Unnamed");
    }
}

TEST_F(Dispatch, RefusesANamespaceOrClassTwice)
{
    const auto before = ClassRegistry::instance().getClasses();
    EXPECT_THROW(factory::registerOrcaNamespace("test", populate), Error);
    EXPECT_THROW(factory::registerOrcaNamespace("test2", populate), Error);
    EXPECT_THROW(factory::registerOrcaNamespace("test3", [](COSNamespace*) { throw std::bad_alloc(); }),
                 std::bad_alloc);
    EXPECT_EQ(ClassRegistry::instance().getClasses(), before);
    EXPECT_EQ(ClassRegistry::instance().getNamespaces(), std::vector<std::string>{"test"});
}

}  // namespace
}  // namespace orca
