#include "launch/ReportLogo.h"

#include <gtest/gtest.h>

using namespace kvtm;

TEST(ReportLogo, BelongsToABrandOfTheSuite) {
    EXPECT_EQ(LogoFileOfBrand("VELTRANE"), "logo-v3.jpg");
    EXPECT_EQ(LogoFileOfBrand("HALCREST"), "logo-h3.jpg");
    EXPECT_EQ(LogoFileOfBrand("ORMOND"), "logo-o3.jpg");
}

TEST(ReportLogo, DoesNotCountLetterCaseOrTheBlanksAroundABrand) {
    EXPECT_EQ(LogoFileOfBrand("  veltrane "), "logo-v3.jpg");
    EXPECT_EQ(LogoFileOfBrand("Halcrest"), "logo-h3.jpg");
}

TEST(ReportLogo, IsMissingForEveryOtherBrand) {
    EXPECT_EQ(LogoFileOfBrand(""), "");
    EXPECT_EQ(LogoFileOfBrand("   "), "");
    EXPECT_EQ(LogoFileOfBrand("VELTRANE INC"), "");
    EXPECT_EQ(LogoFileOfBrand("VEL TRANE"), "");
    EXPECT_EQ(LogoFileOfBrand("\tORMOND"), ""); // a tabulator is no blank
}

TEST(ReportLogo, LiesBesideTheFolderOfTheBinFolder) {
    EXPECT_EQ(LogoFolderOfBinPath("C:\\QUARRA\\Arvon\\Bin"), "C:\\QUARRA\\Enviro\\");
    EXPECT_EQ(LogoFolderOfBinPath("D:\\Suite 4\\W\xc3\xa4rme\\Arvon\\Bin"),
              "D:\\Suite 4\\W\xc3\xa4rme\\Enviro\\");
}

TEST(ReportLogo, TakesABackslashAtTheEndAsOneMoreFolder) {
    EXPECT_EQ(LogoFolderOfBinPath("C:\\QUARRA\\Arvon\\Bin\\"), "C:\\QUARRA\\Arvon\\Enviro\\");
}

TEST(ReportLogo, HasABareFolderWhereTheBinFolderIsTooShort) {
    EXPECT_EQ(LogoFolderOfBinPath("C:\\Bin"), "Enviro\\");
    EXPECT_EQ(LogoFolderOfBinPath("Bin"), "Enviro\\");
    EXPECT_EQ(LogoFolderOfBinPath("\\"), "Enviro\\");
    EXPECT_EQ(LogoFolderOfBinPath(""), "Enviro\\");
    EXPECT_EQ(LogoFolderOfBinPath("\\\\"), "\\Enviro\\");
}

TEST(ReportLogo, FallsBackToTheDriveOfAFolder) {
    EXPECT_EQ(LogoFolderOnDriveOf("D:\\x"), "D:\\QUARRA\\Enviro\\");
    EXPECT_EQ(LogoFolderOnDriveOf("e:"), "e:\\QUARRA\\Enviro\\");
}

TEST(ReportLogo, HasNoPlaceWithoutADriveLetter) {
    for (const char* folder : {"", "D", "\\usr\\lib", "\\\\server\\share", "1:\\x", ":\\x"})
        EXPECT_FALSE(LogoFolderOnDriveOf(folder)) << folder;
}
