// "Unit Converter" (Qx07): request "Convert" with "Value", "From" and "To": the value in the other unit, as
// text.

#include "suite/tools/SuiteTool.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::string_view Id = "Qx07";

enum class Quantity { Length, Mass, Force, Pressure };

struct Unit {
    std::string_view name;
    Quantity quantity;
    double inBaseUnits; // metre, kilogram, newton, pascal
};
constexpr std::array<Unit, 14> Units = {{
    {"m", Quantity::Length, 1},
    {"cm", Quantity::Length, 0.01},
    {"mm", Quantity::Length, 0.001},
    {"in", Quantity::Length, 0.0254},
    {"ft", Quantity::Length, 0.3048},
    {"kg", Quantity::Mass, 1},
    {"t", Quantity::Mass, 1000},
    {"lb", Quantity::Mass, 0.45359237},
    {"N", Quantity::Force, 1},
    {"kN", Quantity::Force, 1000},
    {"lbf", Quantity::Force, 4.4482216152605},
    {"Pa", Quantity::Pressure, 1},
    {"MPa", Quantity::Pressure, 1e6},
    {"psi", Quantity::Pressure, 6894.757293168},
}};

class UnitConverter : public suite::SuiteTool {
public:
    UnitConverter() : SuiteTool(std::string(Id)) {}

protected:
    std::string OnRequest(arvon::IRequest& request) override {
        return request.Type() == "Convert" ? Convert(request.Parameters()) : std::string();
    }

private:
    static const Unit& FindUnit(const std::string& name) {
        const auto found = std::ranges::find(Units, name, &Unit::name);
        if (found == Units.end()) {
            throw base::ComponentError(base::errors::InvalidCall, std::string(Id),
                                       "the unit \"" + name + "\" is unknown");
        }
        return *found;
    }

    static std::string Convert(arvon::IParameters& parameters) {
        const Unit& from = FindUnit(Text(parameters, "From"));
        const Unit& to = FindUnit(Text(parameters, "To"));
        if (from.quantity != to.quantity) {
            throw base::ComponentError(base::errors::InvalidCall, std::string(Id),
                                       "\"" + std::string(from.name) + "\" and \"" + std::string(to.name) +
                                           "\" measure different things");
        }
        return base::Value(Number(parameters, "Value") * from.inBaseUnits / to.inBaseUnits).ToText();
    }
};

} // namespace

SUITE_EXPORT_TOOL(UnitConverter)
