#include "base/Text.h"
#include "base/XmlDocument.h"
#include "core/ToolMain.h"
#include "options/PrinterEntry.h"

#include <algorithm>
#include <optional>

namespace kvtm {

std::int32_t ToolMain::GetPlatformId() {
    return m_oServices.systemInfo->PlatformId();
}

base::Collection<std::string> ToolMain::GetPrinters(std::int32_t platformId) {
    constexpr std::int32_t ntFamily = 2;
    constexpr int levelWithDefault = 4;
    constexpr int levelOfOthers = 1;
    const int level = platformId == ntFamily ? levelWithDefault : levelOfOthers;

    base::Collection<std::string> printers;
    const std::optional<std::vector<std::string>> names = m_oServices.printers->Enumerate(level);
    if (!names) return printers;
    for (const std::string& ansiName : *names) {
        std::string entry = m_oServices.codePage->FromAnsi(ansiName);
        if (level == levelWithDefault && IsDefaultPrinter(entry)) entry += printerEntry::DefaultMark;
        printers.Add(std::move(entry));
    }
    return printers;
}

bool ToolMain::IsDefaultPrinter(std::string_view printerName) {
    constexpr std::size_t bufferCharacters = 254;
    std::string device = m_oServices.profileStrings->GetString("windows", "device", ",,,", bufferCharacters);
    device.resize(std::min(device.find('\0'), device.size()));
    return m_oServices.codePage->FromAnsi(base::Split(device, ',').front()) == printerName;
}

std::string ToolMain::EnumPrinters() {
    base::XmlDocument document;
    base::XmlNode root = document.CreateRoot("Printers");
    for (const std::string& entry : GetPrinters(GetPlatformId())) {
        base::XmlNode printer = root.AppendElement("Printer");
        printer.SetAttribute("default", printerEntry::IsDefault(entry) ? "-1" : "0");
        printer.SetText(printerEntry::NameOf(entry));
    }
    return document.Text();
}

} // namespace kvtm
