#include "launch/RemovalFiles.h"

#include <gtest/gtest.h>

using namespace kvtm;

TEST(RemovalFiles, AreForFourTypesOfProgram) {
    for (const char* type : {"ORDIX", "VANTOR", "QUARRA", "PLEXA", "Vantor", "  plexa  "})
        EXPECT_TRUE(IsRemovableProgramType(type)) << type;
    for (const char* type : {"", "  ", "Plexa2", "PLEX", "QUARRA\t", "QUARRA, PLEXA", "Core"})
        EXPECT_FALSE(IsRemovableProgramType(type)) << type;
}

TEST(RemovalFiles, LieOnTheDriveOfTheSuite) {
    const RemovalFiles files = RemovalFilesOf("C:\\QUARRA\\Arvon", "X1");
    EXPECT_EQ(files.log, "C:\\QUARRA\\X1\\Install.log");
    EXPECT_EQ(files.instruction, "C:\\QUARRA\\Enviro\\Remove.ini");
    EXPECT_EQ(files.program, "C:\\QUARRA\\Enviro\\KT4-RemoveProgram.exe");
    EXPECT_EQ(files.result, "C:\\QUARRA\\Enviro\\ResultOK.txt");
}

TEST(RemovalFiles, IgnoreBlanksBeforeTheDrive) {
    EXPECT_EQ(RemovalFilesOf("  D:\\Programs", "X1").log, "D:\\QUARRA\\X1\\Install.log");
}

TEST(RemovalFiles, AreBuiltFromWhateverThePathBeginsWith) {
    EXPECT_EQ(RemovalFilesOf("C:", "X1").log, "C:QUARRA\\X1\\Install.log");
    EXPECT_EQ(RemovalFilesOf("", "X1").log, "QUARRA\\X1\\Install.log");
}

TEST(RemovalFiles, TellTheRemovalProgramInFourLines) {
    EXPECT_EQ(RemoveIniText("X1", "Demo", "C:\\QUARRA\\X1\\Install.log"),
              "[Program]\r\n"
              "VREX=X1\r\n"
              "Name=Demo\r\n"
              "Logfile=C:\\QUARRA\\X1\\Install.log\r\n");
}

TEST(RemovalFiles, TellValuesAsTheyStand) {
    EXPECT_EQ(RemoveIniText(" X 1", "a=\"b\" ", ""),
              "[Program]\r\nVREX= X 1\r\nName=a=\"b\" \r\nLogfile=\r\n");
}
