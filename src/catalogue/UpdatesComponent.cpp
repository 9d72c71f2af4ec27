#include "core/Names.h"
#include "core/ToolMain.h"

namespace kvtm {

void ToolMain::ShowOptions() {
    Guarded("ShowOptions", [&] {
        LoadUpdatesComponent();
        SendRequestToOwner(NewRequest(request::ShowOptions), listener::Updates);
    });
}

void ToolMain::PrepareUpdatesBanner() {
    constexpr std::int32_t captionResource = 4027;
    constexpr std::int32_t pictureFlag = 1;
    Guarded("PrepareUpdatesBanner", [&] {
        m_oFramework->SetBanner(LoadResString(captionResource), m_sAppPath + "\\resources\\Updates.bmp",
                                pictureFlag);
    });
}

// No guard: the caller reports.
void ToolMain::LoadUpdatesComponent() {
    arvon::IToolLoader& loader = m_oFramework->Loader();
    if (loader.IsLoaded(listener::Updates)) return;
    if (!loader.Load(listener::Updates, shared_from_this())) {
        throw OwnError(5, "LoadUpdatesComponent", "the host could not load \"Qillo110\"");
    }
}

} // namespace kvtm
