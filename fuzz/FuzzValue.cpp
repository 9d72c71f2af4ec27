#include "base/ComponentError.h"
#include "base/Value.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

/// Runs a conversion, which may refuse its value but nothing else.
template <class Conversion> void Try(Conversion&& conversion) {
    try {
        conversion();
    } catch (const base::ComponentError&) {
    }
}

void Expect(bool condition) {
    if (!condition) std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const base::Value value(std::string(reinterpret_cast<const char*>(data), size));
    Expect(std::isfinite(base::LeadingNumber(*value.TextIfAny())));
    value.EqualsNumber(1);
    Try([&] { value.ToBoolean(); });
    Try([&] { value.ToInteger(); });
    Try([&] {
        const double number = value.ToDouble();
        Expect(std::isfinite(number) && value.EqualsNumber(number));
    });
    Try([&] {
        const std::string text = base::Value(value.ToDate()).ToText();
        Expect(base::Value(base::Value(text).ToDate()).ToText() == text);
    });
    return 0;
}
