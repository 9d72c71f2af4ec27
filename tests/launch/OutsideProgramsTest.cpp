#include "launch/OutsidePrograms.h"

#include <gtest/gtest.h>

using namespace kvtm;

TEST(OutsidePrograms, AreKnownByTheBeginningOfTheirVrex) {
    for (const char* vrex : {"Tobr", "Tobr43", "Jx3", "Jx310", "Jx3\xc3\x84"})
        EXPECT_TRUE(IsOutsideProgram(vrex)) << vrex;
}

TEST(OutsidePrograms, AreKnownByTheExactLetters) {
    for (const char* vrex : {"", "tobr43", "TOBR43", "jx310", "JX310", "Jx210", " Tobr43", "Tob", "Vn21"})
        EXPECT_FALSE(IsOutsideProgram(vrex)) << vrex;
}
