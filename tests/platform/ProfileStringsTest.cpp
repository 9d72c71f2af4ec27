#include "platform/ProfileStrings.h"

#include "platform/Printers.h"

#include <gtest/gtest.h>

namespace {

class OnePrinter : public platform::Printers {
public:
    explicit OnePrinter(std::string name) : name_(std::move(name)) {}
    std::optional<std::vector<std::string>> Enumerate(int) override { return std::vector{name_}; }
    std::string DefaultName() override { return name_; }

private:
    std::string name_;
};

std::string Device(const std::string& printer, std::size_t capacity = 254, const char* section = "windows",
                   const char* entry = "device") {
    OnePrinter printers(printer);
    return platform::ProfileStrings::Create(printers)->GetString(section, entry, ",,,", capacity);
}

TEST(ProfileStrings, BeginsTheDeviceWithTheDefaultPrinter) {
    EXPECT_EQ(Device("Laser \xE4"), "Laser \xE4,cups,");
    EXPECT_EQ(Device("Laser", 254, "Windows", "DEVICE"), "Laser,cups,");
}

TEST(ProfileStrings, AnswersTheFallbackForEverythingElse) {
    EXPECT_EQ(Device(""), ",,,");
    EXPECT_EQ(Device("Laser", 254, "windows", "other"), ",,,");
    EXPECT_EQ(Device("Laser", 254, "other", "device"), ",,,");
}

TEST(ProfileStrings, CutsAtTheCapacity) {
    EXPECT_EQ(Device("Laser", 6), "Laser");
    EXPECT_EQ(Device("Laser", 1), "");
    EXPECT_EQ(Device("Laser", 0), "");
    EXPECT_EQ(Device("", 3), ",,");
}

} // namespace
