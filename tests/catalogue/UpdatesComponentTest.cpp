#include "tests/catalogue/PresentationTest.h"

namespace kvtm::test {

class UpdatesComponent : public PresentationTest {};

TEST_F(UpdatesComponent, IsAnnouncedByABanner) {
    LoadWith({});
    Probe().PrepareUpdatesBanner();
    const auto banner = host->Model().Banner();
    EXPECT_EQ(banner.caption, "text 4027");
    EXPECT_EQ(banner.picture, "C:\\QUARRA\\Arvon\\resources\\Updates.bmp");
    EXPECT_EQ(banner.pictureFlag, 1);
}

TEST_F(UpdatesComponent, ReportsABannerThatTheHostRefuses) {
    LoadWith({});
    host->FailNext("SetBanner");
    Probe().PrepareUpdatesBanner();
    EXPECT_EQ(ClaimReport("PrepareUpdatesBanner").number, 1001);
}

TEST_F(UpdatesComponent, IsAskedForNothingWhenItCannotBeLoaded) {
    LoadWith({});
    host->Refuse("Qillo110");
    Probe().ShowOptions();
    const Report report = ClaimReport("ShowOptions");
    EXPECT_EQ(report.number, base::errors::ObjectErrorBase + 5);
    EXPECT_EQ(report.description, "the host could not load \"Qillo110\"");
    EXPECT_TRUE(Sent().empty());
}

} // namespace kvtm::test
