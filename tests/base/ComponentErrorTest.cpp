#include "base/ComponentError.h"

#include <gtest/gtest.h>

#include <exception>

namespace {

TEST(ComponentError, CarriesNumberSourceAndDescription) {
    const base::ComponentError error(base::errors::ObjectErrorBase + 3, "KvTM10", "größer");
    EXPECT_EQ(error.Number(), -2147221501);
    EXPECT_EQ(error.Source(), "KvTM10");
    EXPECT_EQ(error.Description(), "größer");
    EXPECT_STREQ(error.what(), "größer");
}

TEST(ComponentError, IsCaughtAsAStandardException) {
    try {
        throw base::ComponentError(5, "here", "why");
    } catch (const std::exception& error) {
        EXPECT_STREQ(error.what(), "why");
        return;
    }
    FAIL() << "not caught";
}

TEST(ComponentError, KeepsItsTextsWhenCopied) {
    const base::ComponentError copy = [] {
        const base::ComponentError original(1, std::string(100, 's'), std::string(100, 'd'));
        return base::ComponentError(original);
    }();
    EXPECT_EQ(copy.Source(), std::string(100, 's'));
    EXPECT_EQ(copy.Description(), std::string(100, 'd'));
}

} // namespace
