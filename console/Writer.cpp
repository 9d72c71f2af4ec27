#include "console/JsonWriter.h"
#include "console/TextWriter.h"

namespace arvon::console {

std::unique_ptr<Writer> Writer::Create(Form form, bool calls, std::FILE* out) {
    if (form == Form::JsonLines) return std::make_unique<JsonWriter>(calls, out);
    return std::make_unique<TextWriter>(calls, form == Form::ColouredText, out);
}

} // namespace arvon::console
