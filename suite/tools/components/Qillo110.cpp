// The updates component (listener "Qillo110"): knows which programs can be installed or updated.
//
// Request "ShowUpdates" with "ShowNew": the programs that the packages in C:\QUARRA\Packages offer, as XML:
// new ones (true), or newer versions of installed ones (false). Request "ShowOptions": the settings of the
// component, as XML.

#include "base/XmlDocument.h"
#include "platform/FilePaths.h"
#include "suite/tools/SuiteTool.h"
#include "suite/tools/components/PackageComparison.h"

#include <algorithm>
#include <filesystem>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr std::string_view Id = "Qillo110";

class Qillo110 : public suite::SuiteTool {
public:
    Qillo110() : SuiteTool(std::string(Id)) {}

protected:
    std::string OnRequest(arvon::IRequest& request) override {
        if (request.Type() == "ShowUpdates") {
            const std::shared_ptr<arvon::IParameter> showNew = request.Parameters().Item("ShowNew");
            return ShowUpdates(showNew && showNew->GetValue().ToBoolean());
        }
        if (request.Type() == "ShowOptions") return ShowOptions();
        return {};
    }

private:
    std::string PackageFolder() const { return Host().InstallPath().substr(0, 3) + "QUARRA\\Packages"; }

    std::string ShowUpdates(bool showNew) const {
        base::XmlDocument catalogue;
        catalogue.LoadFile(paths_->ToSystem(Host().AppPath() + "\\Tools.xml"));
        return suite::OfferXml(suite::OfferedPrograms(catalogue, Packages(), showNew), showNew);
    }

    /// In the order of their names. A damaged one is reported, and the others are offered all the same.
    std::vector<base::XmlDocument> Packages() const {
        std::vector<fs::path> files;
        std::error_code missing; // no folder, no packages
        for (const fs::directory_entry& entry :
             fs::directory_iterator(paths_->ToSystem(PackageFolder()), missing)) {
            if (entry.path().extension() == ".xml") files.push_back(entry.path());
        }
        std::ranges::sort(files);

        std::vector<base::XmlDocument> packages;
        for (const fs::path& file : files) {
            try {
                packages.emplace_back().LoadFile(file);
            } catch (const base::ComponentError& error) {
                packages.pop_back();
                Report(error, "Packages");
            }
        }
        return packages;
    }

    std::string ShowOptions() {
        base::XmlDocument document;
        base::XmlNode settings = document.CreateRoot("UpdateSettings");
        settings.SetAttribute("PackageFolder", PackageFolder());
        settings.SetAttribute("CheckAtStart", Option(Id, "chkCheckAtStart", "ON"));
        settings.SetAttribute("CheckIntervalDays", Option(Id, "cmbCheckInterval", "7"));
        return document.Text();
    }

    std::unique_ptr<platform::FilePaths> paths_ = platform::FilePaths::Create();
};

} // namespace

SUITE_EXPORT_TOOL(Qillo110)
