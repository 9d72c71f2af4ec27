#include "base/XmlDocument.h"
#include "catalogue/ToolVisibility.h"
#include "core/ToolMain.h"

namespace kvtm {

std::int32_t ToolMain::CountToolsInCatalog(bool notify) {
    return Guarded("CountToolsInCatalog", std::int32_t{0}, [&] {
        base::XmlDocument catalogue;
        // A catalogue that is missing or damaged counts as empty: the host tells the user when it reads it.
        Skipping([&] { catalogue.LoadFile(m_oServices.filePaths->ToSystem(m_sAppPath + "\\Tools.xml")); });
        if (catalogue.IsEmpty()) return 0;

        const auto count = static_cast<std::int32_t>(catalogue.Select("//Tool").size());
        const std::uint64_t countsBefore = m_lCatalogueCounts;
        if (notify && m_lKnownToolCount < count) {
            const std::string prompt =
                LoadResString(42) + "\r\n" + LoadResString(43) + "\r\n" + LoadResString(44);
            m_oFramework->ShowMessage(prompt, arvon::boxStyle::Information, LoadResString(45));
        }
        if (m_lCatalogueCounts == countsBefore) { // else a later count came in while the user read
            m_lKnownToolCount = count;
            ++m_lCatalogueCounts;
        }
        return count;
    });
}

// What is on the screen stays as it is until it is built the next time.
void ToolMain::TakeNewCatalogue() {
    if (!m_bUnloading) {
        // the host itself tells of a catalogue that it cannot read
        Skipping([&] { m_oFramework->Tools().Reload(); });
        RelistTools();
    }
    CountToolsInCatalog(true);
}

bool ToolMain::LoadToolsCollection() {
    Guarded("LoadToolsCollection", [&] {
        m_colListedTools = std::make_unique<ToolCollection>();
        arvon::IToolRecords& tools = m_oFramework->Tools();
        for (std::size_t position = 1; position <= tools.Count(); ++position) {
            const ToolRecord tool = tools.Item(position);
            // The show-all switch is the views' concern: this collection holds what is meant for the list.
            constexpr bool showAllTools = false;
            if (IsShown(*tool, showAllTools)) m_colListedTools->Add(tool, tool->Name());
        }
    });
    return true;
}

ToolCollection& ToolMain::ListedTools() {
    if (!m_colListedTools) m_colListedTools = std::make_unique<ToolCollection>();
    return *m_colListedTools;
}

} // namespace kvtm
