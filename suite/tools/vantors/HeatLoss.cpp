// "Wärmebedarf" (Vn34): the heat that a wall, window or roof lets out.
//
// Request "Calculate" with "UValue" (W/m2K), "AreaM2" and "OutsideTemperature" (degrees Celsius): watts, as
// text. The room's temperature comes from the option "txtRoomTemperature" and follows its changes.

#include "suite/tools/SuiteTool.h"

#include <optional>

namespace {

constexpr std::string_view Id = "Vn34";
constexpr std::string_view TemperatureOption = "txtRoomTemperature";

class HeatLoss : public suite::SuiteTool {
public:
    HeatLoss() : SuiteTool(std::string(Id)) {}

protected:
    std::string OnRequest(arvon::IRequest& request) override {
        if (request.Type() == "Calculate") return Calculate(request.Parameters());
        if (request.Type() == "NewOptions") {
            const auto option = suite::OptionIn(Text(request.Parameters(), "Options"), Id, TemperatureOption);
            if (option) roomTemperature_ = base::Value(*option).ToDouble();
            return "True";
        }
        return {};
    }

private:
    /// Asked for at the first calculation, and known from then on.
    double RoomTemperature() {
        if (!roomTemperature_) roomTemperature_ = base::Value(Option(Id, TemperatureOption, "20")).ToDouble();
        return *roomTemperature_;
    }

    std::string Calculate(arvon::IParameters& parameters) {
        const double uValue = Number(parameters, "UValue");
        const double areaM2 = Number(parameters, "AreaM2");
        if (!(uValue >= 0 && areaM2 >= 0)) {
            throw base::ComponentError(base::errors::InvalidCall, std::string(Id),
                                       "\"UValue\" and \"AreaM2\" should not be below 0");
        }
        const double watts = uValue * areaM2 * (RoomTemperature() - Number(parameters, "OutsideTemperature"));
        return base::Value(watts).ToText();
    }

    std::optional<double> roomTemperature_;
};

} // namespace

SUITE_EXPORT_TOOL(HeatLoss)
