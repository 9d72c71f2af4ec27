// What the profile in host.ini permits on the page of a program.

#include "tests/desktop/DesktopFixture.h"

#include "core/contract/Framework.h"
#include "core/contract/Tool.h"

#include <QPushButton>

#include <fstream>

namespace desktop {
namespace {

class PermissionsTest : public DesktopTest {
protected:
    void Permit(const char* profile) {
        std::ofstream ini(suite / "host.ini", std::ios::app);
        ini << "\n[Profile]\n" << profile << "\n";
    }
    void OpenPageOf(const char* program) {
        Tree().setCurrentIndex(NodeOf(QString::fromUtf8(program)));
        Settle();
    }
    bool CanLaunch() { return Find<QPushButton>("launch")->isEnabled(); }
    bool CanUpdate() { return Find<QPushButton>("update")->isEnabled(); }
    /// How many tasks of the profile permit that.
    std::ptrdiff_t Tasks(const std::string& name, const std::string& tool) {
        const auto* profile = dynamic_cast<const arvon::IProfile*>(bridge->Host().Component().get());
        std::ptrdiff_t found = 0;
        for (std::size_t i = 1; profile && i <= profile->Tasks()->Count(); ++i)
            found +=
                profile->Tasks()->Item(i)->Name() == name && profile->Tasks()->Item(i)->SecondText() == tool;
        return found;
    }
};

TEST_F(PermissionsTest, EverythingIsPermittedWhereNothingIsSaid) {
    Open();
    OpenPageOf("Layout");
    EXPECT_TRUE(CanLaunch());
    EXPECT_TRUE(CanUpdate());
    QTest::mouseClick(Find<QPushButton>("launch"), Qt::LeftButton);
    Settle();
    EXPECT_TRUE(StateOf(QStringLiteral("Layout")).startsWith(QStringLiteral("Running")));
}

TEST_F(PermissionsTest, AreThoseOfTheProgramsThatTheProfileNames) {
    Permit("CanLaunch = Plot Queue; Łożyska ;\nCanUpdate=");
    Open();
    OpenPageOf("Łożyska");
    EXPECT_TRUE(CanLaunch());
    EXPECT_FALSE(CanUpdate());
    OpenPageOf("Layout");
    EXPECT_FALSE(CanLaunch());
    OpenPageOf("Plot Queue");
    EXPECT_TRUE(CanLaunch());
}

TEST_F(PermissionsTest, AStarPermitsAllPrograms) {
    Permit("CanLaunch=\nCanUpdate=Layout;*");
    Open();
    OpenPageOf("Łożyska");
    EXPECT_FALSE(CanLaunch());
    EXPECT_TRUE(CanUpdate());
}

TEST_F(PermissionsTest, AreGivenToProgramsThatComeLater) {
    Open();
    QByteArray catalogue = Read("Arvon/Tools.xml");
    std::ofstream(File("Arvon/Tools.xml"), std::ios::trunc)
        << catalogue.replace("\"Plot Queue\"", "\"Plotter\"").toStdString();
    EXPECT_EQ(Tasks("Can Launch", "Plotter"), 0);
    bridge->Do([](arvon::host::ReferenceHost& host) { host.Framework()->Tools().Reload(); });
    Settle();
    EXPECT_EQ(Tasks("Can Launch", "Plotter"), 1);
    EXPECT_EQ(Tasks("Can Update", "Plotter"), 1);
    EXPECT_EQ(Tasks("Can Launch", "Layout"), 1) << "and not twice to the others";
}

} // namespace
} // namespace desktop
