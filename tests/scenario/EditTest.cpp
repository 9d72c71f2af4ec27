#include "base/XmlDocument.h"
#include "tests/scenario/ConsoleRun.h"

#include <string>

namespace scenario {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// The editor of records, answered by a script.
class Editing : public Scenario {
protected:
    static constexpr const char* catalogue = "drive_c/QUARRA/Arvon/Tools.xml";

    /// An attribute in the catalogue file.
    std::string Saved(const std::string& name, const char* attribute) const {
        base::XmlDocument document;
        document.LoadFile(File(catalogue));
        return document.SelectSingle("//Tool[@Name='" + name + "']").Attribute(attribute);
    }
};

TEST_F(Editing, SetsTheRecordsValuesAndSavesThem) {
    const Transcript run = Run("load\nitem Layout 5\n"
                               "edit Layout 'CommandLine=--seconds 9' Classification=Site\n"
                               "task tskEditTool\nshow tools\nshow list\n");
    EXPECT_THAT(run.Errors(), IsEmpty());
    EXPECT_THAT(run.Reports(), IsEmpty());
    EXPECT_EQ(run.ExitStatus(), 0);
    const Json tool = Find(run.State("tools"), "Name", "Layout");
    EXPECT_EQ(tool.at("CommandLine"), "--seconds 9");
    EXPECT_EQ(tool.at("Classification"), "Site");
    EXPECT_EQ(Find(run.State("list"), "text", "Layout").at("classification"), "Site");
    EXPECT_EQ(Saved("Layout", "CommandLine"), "--seconds 9");
    EXPECT_EQ(Saved("Layout", "Classification"), "Site");
    EXPECT_EQ(Saved("Layout", "VREX"), "Tobr43");
}

TEST_F(Editing, RenamesARecordEverywhere) {
    const Transcript run = Run("load\nitem Layout 5\nedit Layout 'Name=Plans & Sections' ShowInList=-1\n"
                               "task tskEditTool\nshow list\nshow tabs\n");
    EXPECT_THAT(run.Errors(), IsEmpty());
    EXPECT_THAT(Column(run.State("list"), "text"), Contains("Plans & Sections"));
    EXPECT_THAT(Column(run.State("list"), "text"), Not(Contains("Layout")));
    EXPECT_EQ(Saved("Plans & Sections", "VREX"), "Tobr43");
}

TEST_F(Editing, IsAnsweredOnceAndCancelledFromThenOn) {
    const Transcript run = Run("load\nitem Layout 5\nedit Layout Brand=Nordhain\nedit Layout Brand=Halcrest\n"
                               "task tskEditTool\nitem Layout 5\ntask tskEditTool\nshow tools\n");
    EXPECT_THAT(run.Errors(), IsEmpty());
    EXPECT_EQ(Saved("Layout", "Brand"), "Halcrest") << "the later answer stands in the earlier one's place";
    int saves = 0;
    for (const Json& call : run.Of("call"))
        saves += call.at("operation") == "Tools.Edit";
    EXPECT_EQ(saves, 2);
}

TEST_F(Editing, ChangesNothingWhenAnotherRecordIsEdited) {
    const std::string before = Read(catalogue);
    const Transcript run = Run("load\nitem Layout 5\nedit 'Grid Check' Brand=Halcrest\ntask tskEditTool\n"
                               "item Layout 5\ntask tskEditTool\nshow tools\n");
    EXPECT_THAT(run.Errors(), ElementsAre("the record to be edited is \"Layout\", expected \"Grid Check\""));
    EXPECT_EQ(run.ExitStatus(), 1);
    EXPECT_EQ(Find(run.State("tools"), "Name", "Grid Check").at("Brand"), "Halcrest") << "as it was";
    EXPECT_EQ(Find(run.State("tools"), "Name", "Layout").at("Brand"), "Veltrane");
    EXPECT_EQ(Read(catalogue), before);
}

TEST_F(Editing, ChangesNothingWhenAValueIsRefused) {
    const std::string before = Read(catalogue);
    const Transcript run =
        Run("load\nitem Layout 5\n"
            "edit Layout Name=Other Brand=Nordhain ShowInList=perhaps\ntask tskEditTool\n"
            "item Layout 5\nedit Layout VREX=X Kind=3.5e99\ntask tskEditTool\n"
            "item Layout 5\nedit Layout Name=Other Colour=red\ntask tskEditTool\n"
            "item Layout 5\nedit Layout Name=Other XML=<Tool/>\ntask tskEditTool\nshow tools\nshow list\n");
    ASSERT_EQ(run.Errors().size(), 4u);
    EXPECT_THAT(run.Errors()[0],
                HasSubstr("the record \"Layout\" was not edited: ShowInList=perhaps is refused: "));
    EXPECT_THAT(run.Errors()[1], HasSubstr("Kind=3.5e99 is refused: "));
    EXPECT_THAT(run.Errors()[2], HasSubstr("Colour=red is refused: "));
    EXPECT_THAT(run.Errors()[3], HasSubstr("XML=<Tool/> is refused: "));
    const Json tool = Find(run.State("tools"), "Name", "Layout");
    ASSERT_FALSE(tool.is_null());
    EXPECT_EQ(tool.at("Brand"), "Veltrane");
    EXPECT_EQ(tool.at("VREX"), "Tobr43");
    EXPECT_THAT(Column(run.State("list"), "text"), Contains("Layout"));
    EXPECT_THAT(run.Reports(), IsEmpty());
    EXPECT_EQ(Read(catalogue), before);
}

TEST_F(Editing, NeedsANameAndAtLeastOneValue) {
    const Transcript run = Run("edit\nedit Layout\nedit Layout Brand\nhelp edit\n");
    EXPECT_THAT(run.Errors(), ElementsAre("expected: edit NAME PROPERTY=VALUE ...",
                                          "expected: edit NAME PROPERTY=VALUE ...",
                                          "expected name=value, found \"Brand\""));
    ASSERT_EQ(run.Of("help").size(), 1u);
    EXPECT_EQ(run.Of("help")[0].at("arguments"), "NAME PROPERTY=VALUE ...");
}

} // namespace scenario
