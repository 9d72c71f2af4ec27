// "Material Library" (Qx12): the materials of "Materials.xml" in the tool's own folder.
//
// Request "Materials": their names, one a line. Request "Material" with "Name": the element of that material;
// an error is reported, and the answer is empty, for one that is not there.

#include "base/XmlDocument.h"
#include "platform/FilePaths.h"
#include "suite/tools/SuiteTool.h"

namespace {

constexpr std::string_view Id = "Qx12";

class MaterialLibrary : public suite::SuiteTool {
public:
    MaterialLibrary() : SuiteTool(std::string(Id)) {}

protected:
    void OnLoad() override {
        const std::string drive = Host().InstallPath().substr(0, 3);
        materials_.LoadFile(platform::FilePaths::Create()->ToSystem(drive + "QUARRA\\Qx12\\Materials.xml"));
    }

    std::string OnRequest(arvon::IRequest& request) override {
        if (request.Type() == "Materials") return Names();
        if (request.Type() == "Material") return Material(Text(request.Parameters(), "Name"));
        return {};
    }

private:
    std::string Names() const {
        std::string names;
        for (const base::XmlNode& material : materials_.Select("//Material"))
            names += (names.empty() ? "" : "\n") + material.Attribute("Name");
        return names;
    }

    std::string Material(const std::string& name) const {
        for (const base::XmlNode& material : materials_.Select("//Material")) {
            if (material.Attribute("Name") == name) return material.Xml();
        }
        throw base::ComponentError(base::errors::InvalidCall, std::string(Id),
                                   "the material \"" + name + "\" is not in the library");
    }

    base::XmlDocument materials_;
};

} // namespace

SUITE_EXPORT_TOOL(MaterialLibrary)
