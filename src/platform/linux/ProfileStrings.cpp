#include "platform/ProfileStrings.h"

#include "base/Text.h"
#include "platform/Printers.h"

namespace platform {

namespace {

class PrinterProfile final : public ProfileStrings {
public:
    explicit PrinterProfile(Printers& printers) : printers_(printers) {}

    std::string GetString(std::string_view section, std::string_view entry, std::string_view fallback,
                          std::size_t capacity) override {
        std::string text(fallback);
        if (base::EqualIgnoringCase(section, "windows") && base::EqualIgnoringCase(entry, "device")) {
            const std::string printer = printers_.DefaultName();
            if (!printer.empty()) text = printer + ",cups,";
        }
        if (text.size() >= capacity) text.resize(capacity == 0 ? 0 : capacity - 1);
        return text;
    }

private:
    Printers& printers_;
};

} // namespace

std::unique_ptr<ProfileStrings> ProfileStrings::Create(Printers& printers) {
    return std::make_unique<PrinterProfile>(printers);
}

} // namespace platform
