// "Beam & Frame" (Vn21): the deflection and the bending moment of a beam on two supports under an even load.
//
// Request "Calculate" with "SpanM", "LoadKNPerM" and "InertiaCm4": an element "Beam" with the results. The
// material comes from the option "cmbMaterial" and follows its changes.

#include "base/XmlDocument.h"
#include "suite/tools/SuiteTool.h"

#include <algorithm>
#include <array>
#include <optional>

namespace {

constexpr std::string_view Id = "Vn21";
constexpr std::string_view MaterialOption = "cmbMaterial";

struct Material {
    std::string_view name;
    double modulusMPa;
};
constexpr std::array<Material, 3> Materials = {{
    {"Steel S235", 210000},
    {"Aluminium 6061", 69000},
    {"Spruce C24", 11000},
}};

class BeamAndFrame : public suite::SuiteTool {
public:
    BeamAndFrame() : SuiteTool(std::string(Id)) {}

protected:
    std::string OnRequest(arvon::IRequest& request) override {
        if (request.Type() == "Calculate") return Calculate(request.Parameters());
        if (request.Type() == "NewOptions") {
            if (const auto changed =
                    suite::OptionIn(Text(request.Parameters(), "Options"), Id, MaterialOption))
                material_ = changed;
            return "True";
        }
        return {};
    }

private:
    /// Asked for at the first calculation, and known from then on.
    const std::string& MaterialName() {
        if (!material_) material_ = Option(Id, MaterialOption, Materials.front().name);
        return *material_;
    }

    double ModulusMPa() {
        const auto found = std::ranges::find(Materials, MaterialName(), &Material::name);
        if (found == Materials.end()) {
            throw base::ComponentError(base::errors::InvalidCall, std::string(Id),
                                       "the material \"" + MaterialName() + "\" is unknown");
        }
        return found->modulusMPa;
    }

    std::string Calculate(arvon::IParameters& parameters) {
        const double spanM = Number(parameters, "SpanM");
        const double loadKNPerM = Number(parameters, "LoadKNPerM");
        const double inertiaCm4 = Number(parameters, "InertiaCm4");
        if (!(spanM > 0 && inertiaCm4 > 0)) {
            throw base::ComponentError(base::errors::InvalidCall, std::string(Id),
                                       "\"SpanM\" and \"InertiaCm4\" should be above 0");
        }
        // 5 q L^4 / (384 E I), in N and mm: 1 kN/m is 1 N/mm, 1 MPa is 1 N/mm2
        const double spanMm = spanM * 1e3;
        const double deflectionMm =
            5 * loadKNPerM * spanMm * spanMm * spanMm * spanMm / (384 * ModulusMPa() * inertiaCm4 * 1e4);
        base::XmlDocument result;
        base::XmlNode beam = result.CreateRoot("Beam");
        beam.SetAttribute("Material", MaterialName());
        beam.SetAttribute("DeflectionMm", base::Value(deflectionMm).ToText());
        beam.SetAttribute("MomentKNm", base::Value(loadKNPerM * spanM * spanM / 8).ToText());
        return result.Text();
    }

    std::optional<std::string> material_;
};

} // namespace

SUITE_EXPORT_TOOL(BeamAndFrame)
