#include "base/Object.h"

#include "base/Text.h"
#include "base/Value.h"
#include "tests/base/RefusalOf.h"

#include <array>

namespace {

using base::Object;
using base::Value;

class Counter : public Object {
public:
    Value Get(std::string_view member) const override {
        if (base::EqualIgnoringCase(member, "Count")) return count_;
        return Object::Get(member);
    }
    void Set(std::string_view member, const Value& value) override {
        if (!base::EqualIgnoringCase(member, "Count")) return Object::Set(member, value);
        count_ = value.ToInteger();
    }
    Value Call(std::string_view member, std::span<const Value> arguments) override {
        if (!base::EqualIgnoringCase(member, "Add")) return Object::Call(member, arguments);
        count_ += arguments.front().ToInteger();
        return count_;
    }

private:
    std::int32_t count_ = 0;
};

TEST(Object, RefusesEveryNameByDefault) {
    Object object;
    EXPECT_EQ(RefusalOf([&] { object.Get("Name"); }).number, base::errors::NoSuchMember);
    EXPECT_EQ(RefusalOf([&] { object.Set("Name", Value(1)); }).number, base::errors::NoSuchMember);
    EXPECT_EQ(RefusalOf([&] { object.Call("Name", {}); }).number, base::errors::NoSuchMember);
}

TEST(Object, NamesTheMemberThatIsMissing) {
    const Refusal refusal = RefusalOf([] { Object().Get("Classification"); });
    EXPECT_EQ(refusal.description, "the object has no member \"Classification\"");
    EXPECT_EQ(refusal.source, "Object");
}

TEST(Object, OffersWhatItOverridesAndRefusesTheRest) {
    Counter counter;
    counter.Set("COUNT", "40");
    const std::array arguments = {Value(2)};
    EXPECT_EQ(counter.Call("add", arguments).ToInteger(), 42);
    EXPECT_EQ(counter.Get("count").ToInteger(), 42);
    EXPECT_EQ(RefusalOf([&] { counter.Get("Add"); }).number, base::errors::NoSuchMember);
}

} // namespace
