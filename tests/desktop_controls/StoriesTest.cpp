#include "desktop/editor/RecordEditor.h"
#include "desktop/trace/TraceDock.h"
#include "desktop/trace/TraceModel.h"
#include "host/ReferenceHost.h"
#include "tests/desktop_controls/Support.h"
#include "tests/suite/SuiteCopy.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <functional>
#include <set>
#include <sstream>

namespace desktop::test {

namespace {

using arvon::host::ReferenceHost;
using testing::HasSubstr;
using testing::Not;

/// Tells a control of new options, as the desktop does.
class OptionsNotices final : public arvon::host::IObserver {
public:
    explicit OptionsNotices(ReferenceHost& host) : host_(host) { host_.Subscribe(*this); }
    ~OptionsNotices() override { host_.Unsubscribe(*this); }
    OptionsNotices(const OptionsNotices&) = delete;
    OptionsNotices& operator=(const OptionsNotices&) = delete;

    void Follow(QObject* who, const std::function<void(const std::string&)>& told) {
        host_.Listen("KvTMU110", {});
        who_ = who;
        told_ = told;
    }
    void OnReply(const arvon::host::MessageRecord& message) override {
        if (!who_ || message.name != "NewOptions" || message.destination != "KvTMU110") return;
        for (const arvon::host::ParameterRecord& parameter : message.parameters)
            if (parameter.name == "Options") told_(parameter.value.ToText());
    }

private:
    ReferenceHost& host_;
    QPointer<QObject> who_;
    std::function<void(const std::string&)> told_;
};

/// The real component in the reference host on a copy of the sample suite, its views shown by this library.
class StoriesTest : public suite::test::SuiteCopy {
protected:
    StoriesTest() {
        services.request = [this](std::string_view type, auto parameters, std::string_view source) {
            return host->SendRequest(type, parameters, source);
        };
        services.requestOf = [this](std::string_view destination, std::string_view type, auto parameters,
                                    std::string_view source) {
            return host->SendRequest(type, parameters, source, destination);
        };
        services.text = [this](int id) {
            return QString::fromStdString(
                host->Framework()->GetResource("Tools", std::to_string(id)).ToText());
        };
        arvon::host::Hooks hooks;
        hooks.makeControl = [this](std::string_view control, std::string_view) {
            return std::shared_ptr<base::Object>(MakeControl(control, services));
        };
        hooks.editRecord = [this](arvon::IToolRecord& record) {
            return EditRecord(record, nullptr, [this](const std::string& name) {
                return host->Framework()->Tools().Item(name) != nullptr;
            });
        };
        host = std::make_unique<ReferenceHost>(Installation(), hooks);
        dock = std::make_unique<TraceDock>(*host);
    }
    ~StoriesTest() override {
        shown.reset();
        notices.reset();
        dock.reset();
    }

    void Load() {
        host->OpenComponent(KVTM_COMPONENT);
        ASSERT_TRUE(host->Load());
    }
    /// From now on the controls are told of new options.
    void FollowOptions() {
        notices = std::make_unique<OptionsNotices>(*host);
        services.onNewOptions = [this](QObject* who, const std::function<void(const std::string&)>& told) {
            notices->Follow(who, told);
        };
    }
    QWidget& Show(const char* view) {
        const auto control = std::dynamic_pointer_cast<ControlObject>(host->ControlOf(view));
        if (!control) throw std::runtime_error(std::string("no control of ") + view);
        QWidget* widget = control->Widget();
        if (widget == shown.get()) {
            widget->hide(); // it is opened again
        } else {
            shown.reset(widget);
        }
        ShowInFront(*shown);
        return *shown;
    }
    std::string Options() const { return Read(Quarra("Arvon/OPTIONS.XML")); }
    bool IsOpen(const std::string& window) const {
        return std::ranges::any_of(host->Model().Windows(),
                                   [&](const auto& view) { return view.key == window; });
    }

    ControlServices services;
    std::unique_ptr<ReferenceHost> host;
    std::unique_ptr<TraceDock> dock;
    std::unique_ptr<OptionsNotices> notices;
    std::unique_ptr<QWidget> shown;
};

std::string Line(const std::string& kind, const std::string& name, const std::string& destination) {
    return kind + ' ' + name + " to " + destination;
}

void Flatten(const TraceNode& node, std::vector<std::string>& lines) {
    const bool isRequest = node.message.kind == arvon::host::MessageRecord::Kind::Request;
    lines.push_back(Line(isRequest ? "request" : "event", node.message.name, node.message.destination));
    for (const auto& child : node.children)
        Flatten(*child, lines);
}

} // namespace

TEST_F(StoriesTest, OptionsAreChangedInTheirWindowAndKept) {
    Load();
    FollowOptions();
    host->ClickMenu("mnuToolOptions");
    ASSERT_TRUE(IsOpen("ocxToolOptions"));
    QWidget& panel = Show("ocxToolOptions");
    auto& pages = Child<QListView>(panel, "pages");
    pages.setCurrentIndex(pages.model()->index(2, 0));
    EXPECT_EQ(Child<QLabel>(panel, "title").text(), "Layout");
    auto& spacing = Child<QLineEdit>(panel, "txtGridSpacing");
    spacing.selectAll();
    QTest::keyClicks(&spacing, "7.25");
    Click(Child<QCheckBox>(panel, "chkSnapToGrid"));
    EXPECT_THAT(Options(), Not(HasSubstr("7.25")));
    QTest::keyClick(&spacing, Qt::Key_Return);

    EXPECT_FALSE(IsOpen("ocxToolOptions"));
    EXPECT_THAT(Options(), HasSubstr("<Name>txtGridSpacing</Name><Value>7.25</Value>"));
    EXPECT_THAT(Options(), HasSubstr("<Name>chkSnapToGrid</Name><Value>OFF</Value>"));
    EXPECT_THAT(Options(), HasSubstr("<Template>C:\\QUARRA\\Tobr43\\Sheets\\A3 landscape.qst</Template>"));
    const std::array parameters{arvon::host::ParameterRecord{"ToolID", 2, base::Value("Tobr43")},
                                arvon::host::ParameterRecord{"OptionName", 2, base::Value("txtGridSpacing")}};
    EXPECT_EQ(host->SendRequest("GetOptionValue", parameters), "7.25");
}

/// Rows as they stand after the options were saved with a choice picked, and after the click on its column.
TEST_F(StoriesTest, EverySortOrderThatIsOfferedSortsAsItsColumnDoes) {
    Load();
    FollowOptions();
    const auto rows = [&] {
        std::vector<std::string> texts;
        for (const arvon::host::model::ListRow& row : host->Model().List("lvTools"))
            texts.push_back(row.text);
        return texts;
    };
    const auto pick = [&](const std::function<void(QWidget&)>& choose) {
        host->ClickMenu("mnuToolOptions");
        QWidget& panel = Show("ocxToolOptions");
        ASSERT_EQ(Child<QLabel>(panel, "title").text(), "Tool Manager");
        choose(panel);
        Click(Child<QPushButton>(panel, "ok"));
        ASSERT_FALSE(IsOpen("ocxToolOptions"));
        host->NodeEvent("tabQRV", "nodTools");
    };
    const auto setKey = [&](const QString& label) {
        pick([&](QWidget& panel) {
            auto& keys = Child<QComboBox>(panel, "cmbToolSortKey");
            ASSERT_GE(keys.findText(label), 0) << label.toStdString();
            keys.setCurrentIndex(keys.findText(label));
        });
    };
    const auto setOrder = [&](int place) {
        pick([&](QWidget& panel) {
            Click(*Child<QWidget>(panel, "optToolSortOrder").findChildren<QRadioButton*>()[place]);
        });
    };

    std::set<std::vector<std::string>> orders;
    for (const auto& [key, label] : {std::pair{"version", "Version"},
                                     {"lastupdated", "Last updated"},
                                     {"classification", "Classification"},
                                     {"name", "Name"}}) {
        for (const int descending : {0, 1}) {
            setKey("Name"); // from the same order each time: equal tools stay as they were
            setOrder(0);
            host->ColumnClick("lvTools", "name", "0");
            host->ColumnClick("lvTools", key, std::to_string(descending));
            const std::vector<std::string> wanted = rows();
            host->ColumnClick("lvTools", "name", "0");
            if (descending) setOrder(1); // of the names, which only turns them round
            host->ColumnClick("lvTools", "name", "0");
            setKey(label);
            EXPECT_EQ(rows(), wanted) << key << ' ' << descending;
            orders.insert(wanted);
        }
    }
    EXPECT_GE(orders.size(), 7U) << "each sorts in its own way; dates only upwards";
    EXPECT_THAT(Options(), HasSubstr("<Name>cmbToolSortKey</Name><Value>name</Value>"));
}

TEST_F(StoriesTest, ASortKeyStoredInAnotherLetterCaseIsShownAsItsChoice) {
    std::string options = Options();
    const std::string stored = "<Name>cmbToolSortKey</Name><Value>Name<";
    options.replace(options.find(stored), stored.size(), "<Name>cmbToolSortKey</Name><Value>LastUpdated<");
    Write(Quarra("Arvon/OPTIONS.XML"), options);
    Load();
    FollowOptions();
    host->ClickMenu("mnuToolOptions");
    QWidget& panel = Show("ocxToolOptions");
    auto& keys = Child<QComboBox>(panel, "cmbToolSortKey");
    EXPECT_EQ(keys.currentText(), "Last updated");
    EXPECT_EQ(keys.count(), 4);
    EXPECT_EQ(Child<QLabel>(panel, "state").text(), "");
    keys.setCurrentIndex(keys.findText("Version"));
    keys.setCurrentIndex(keys.findText("Last updated"));
    Click(Child<QPushButton>(panel, "ok"));
    EXPECT_THAT(Options(), HasSubstr("<Name>cmbToolSortKey</Name><Value>lastupdated</Value>"));
}

TEST_F(StoriesTest, OptionsThatCannotBeSavedStayInTheirWindow) {
    Load();
    FollowOptions();
    host->ClickMenu("mnuToolOptions");
    QWidget& panel = Show("ocxToolOptions");
    auto& pages = Child<QListView>(panel, "pages");
    pages.setCurrentIndex(pages.model()->index(2, 0));
    auto& spacing = Child<QLineEdit>(panel, "txtGridSpacing");
    spacing.selectAll();
    QTest::keyClicks(&spacing, "7.25");
    const std::string before = Options();
    const std::filesystem::path file = Quarra("Arvon/OPTIONS.XML");
    std::filesystem::remove(file);
    Write(file / "in the way", "");
    Click(Child<QPushButton>(panel, "ok"));
    EXPECT_TRUE(IsOpen("ocxToolOptions"));
    EXPECT_THAT(Child<QLabel>(panel, "state").text().toStdString(), HasSubstr("could not be saved"));
    EXPECT_EQ(spacing.text(), "7.25");

    std::filesystem::remove_all(file);
    Write(file, before);
    Click(Child<QPushButton>(panel, "ok"));
    EXPECT_FALSE(IsOpen("ocxToolOptions"));
    EXPECT_THAT(Options(), HasSubstr("<Name>txtGridSpacing</Name><Value>7.25</Value>"));
}

TEST_F(StoriesTest, CancelledOptionsLeaveTheFileAlone) {
    Load();
    const std::string before = Options();
    host->ClickMenu("mnuToolOptions");
    QWidget& panel = Show("ocxToolOptions");
    Click(Child<QCheckBox>(panel, "chkShowToolTips"));
    QTest::keyClick(&panel, Qt::Key_Escape);
    EXPECT_FALSE(IsOpen("ocxToolOptions"));
    EXPECT_EQ(Options(), before);
}

TEST_F(StoriesTest, HiddenPricingOptionsAreNotShown) {
    Load();
    host->ClickMenu("mnuToolOptions");
    QWidget& panel = Show("ocxToolOptions");
    QTest::keyClicks(&Child<QLineEdit>(panel, "search"), "pric");
    EXPECT_EQ(Child<QListView>(panel, "pages").model()->rowCount(), 0);
}

TEST_F(StoriesTest, AToolsPropertiesLaunchIt) {
    host->AddProfileTask("Can Launch", "Layout");
    Load();
    host->NodeEvent("tabQRV", "nodTools", arvon::eventKind::Expanded);
    host->NodeEvent("tabQRV", "Layout");
    QWidget& panel = Show("ocxToolProperties");
    EXPECT_EQ(Child<QLabel>(panel, "title").text(), "Layout");
    EXPECT_FALSE(Child<QPushButton>(panel, "update").isEnabled()) << "the profile has no such task";
    Click(Child<QPushButton>(panel, "launch"));
    EXPECT_EQ(host->Model().Processes().size(), 1U);
    host->NodeEvent("tabQRV", "Plot Queue");
    std::dynamic_pointer_cast<ControlObject>(host->ControlOf("ocxToolProperties"))->Refresh();
    EXPECT_EQ(Child<QLabel>(panel, "title").text(), "Plot Queue");
    EXPECT_FALSE(Child<QPushButton>(panel, "launch").isEnabled());
    EXPECT_TRUE(host->WaitForProcesses(std::chrono::seconds(20)));
}

TEST_F(StoriesTest, UpdatesAreThoseOfThePackages) {
    Load();
    QWidget& panel = Show("ocxToolsUpdate");
    const QAbstractItemModel& updates = *Child<QTreeView>(panel, "updates").model();
    ASSERT_TRUE(WaitUntil([&] { return updates.rowCount() > 0; })) << "what answers was not loaded yet";
    EXPECT_EQ(updates.index(0, 0).data().toString(), "Layout");
    EXPECT_GT(Child<QTreeView>(panel, "new").model()->rowCount(), 0);
    panel.resize(620, 383);
    TakePictures(panel, "updates-suite");
}

TEST_F(StoriesTest, AnEditedRecordIsSaved) {
    Load();
    host->NodeEvent("tabQRV", "nodTools");
    host->SelectRow("lvTools", "Layout");
    QTimer::singleShot(0, [] {
        QWidget* dialog = QApplication::activeModalWidget();
        auto& name = Child<QLineEdit>(*dialog, "name");
        name.selectAll();
        QTest::keyClicks(&name, "Sheets & Plans");
        QTest::keyClick(&name, Qt::Key_Return);
    });
    host->ClickTask("tskEditTool");
    EXPECT_THAT(Read(Quarra("Arvon/Tools.xml")), HasSubstr("Name=\"Sheets &amp; Plans\""));
}

TEST_F(StoriesTest, ACopiedScriptRunsAgainInTheConsole) {
    Load();
    host->NodeEvent("tabQRV", "nodTools");
    const std::string column = host->Model().Columns("lvTools").at(1).key;
    host->ColumnClick("lvTools", column, "1");
    host->ListItemEvent("lvTools", "Layout");
    host->WaitForProcesses(std::chrono::seconds(20));
    host->ListItemEvent("lvTools", "Layout");
    host->ClickTask("tskShowAll");
    host->ClickMenu("mnuToolOptions");
    QWidget& panel = Show("ocxToolOptions");
    auto& pages = Child<QListView>(panel, "pages");
    pages.setCurrentIndex(pages.model()->index(2, 0));
    QTest::keyClicks(&Child<QLineEdit>(panel, "txtGridSpacing"), "it's \"5\"");
    Click(Child<QPushButton>(panel, "ok"));
    panel.hide();
    host->SendMessage(2, "no request at all");
    host->WaitForProcesses(std::chrono::seconds(20));

    auto& tree = Child<QTreeView>(*dock, "messages");
    ASSERT_TRUE(WaitUntil([&] { return tree.model()->rowCount() > 8; }));
    dock->resize(1100, 380);
    dock->show();
    tree.expandAll();
    tree.setCurrentIndex(tree.model()->index(5, 0));
    EXPECT_EQ(Unnamed(*dock), QStringList());
    TakePictures(*dock, "trace");
    tree.clearSelection();
    Click(Child<QToolButton>(*dock, "copy"));
    const std::string script = QApplication::clipboard()->text().toStdString();
    EXPECT_EQ(script, dock->Script().toStdString());
    EXPECT_THAT(Child<QLabel>(*dock, "status").text().toStdString(), HasSubstr("commands copied"));

    std::vector<std::string> recorded;
    const auto& filter = *qobject_cast<QAbstractProxyModel*>(tree.model());
    for (int row = 0; row < filter.rowCount(); ++row)
        Flatten(*TraceModel::NodeAt(filter.mapToSource(filter.index(row, 0))), recorded);

    const auto second = Outside("second");
    std::filesystem::copy(KVTM_SUITE_FOLDER, second,
                          std::filesystem::copy_options::recursive |
                              std::filesystem::copy_options::copy_symlinks);
    Write(Outside("script.arvon"), script);
    const auto console = Run(
        ARVON_CONSOLE, {"--json", "--quiet", "--suite", second.string(), Outside("script.arvon").string()});
    EXPECT_EQ(console.exitCode, 0) << script << console.output;
    std::vector<std::string> repeated;
    std::istringstream lines(console.output);
    for (std::string line; std::getline(lines, line);) {
        const auto json = nlohmann::json::parse(line);
        if (json.at("is") == "message")
            repeated.push_back(Line(json.at("kind"), json.at("name"), json.at("destination")));
    }
    EXPECT_EQ(repeated, recorded) << script;
    EXPECT_EQ(Read(second / "drive_c/QUARRA/Arvon/OPTIONS.XML"), Options());
}

TEST_F(StoriesTest, TheTraceFiltersPausesAndClears) {
    Load();
    host->NodeEvent("tabQRV", "nodTools");
    host->SendRequest("LoadedVantors", {});
    dock->resize(1100, 380);
    ShowInFront(*dock);
    auto& tree = Child<QTreeView>(*dock, "messages");
    ASSERT_TRUE(WaitUntil([&] { return tree.model()->rowCount() >= 2; }));
    const int all = tree.model()->rowCount();
    QTest::keyClicks(&Child<QLineEdit>(*dock, "search"), "loadedvantors");
    EXPECT_EQ(tree.model()->rowCount(), 1);
    EXPECT_THAT(dock->Script().toStdString(), HasSubstr("load\nrequest LoadedVantors\n"));
    Child<QLineEdit>(*dock, "search").clear();
    auto& listener = Child<QComboBox>(*dock, "listener");
    listener.setCurrentText("Console");
    EXPECT_EQ(tree.model()->rowCount(), 1);
    listener.setCurrentIndex(0);

    Click(Child<QToolButton>(*dock, "pause"));
    host->SendRequest("LoadedVantors", {});
    QTest::qWait(50);
    EXPECT_EQ(tree.model()->rowCount(), all);
    EXPECT_THAT(Child<QLabel>(*dock, "status").text().toStdString(), HasSubstr("paused"));
    Click(Child<QToolButton>(*dock, "pause"));
    host->SendRequest("LoadedVantors", {});
    EXPECT_TRUE(WaitUntil([&] { return tree.model()->rowCount() == all + 1; }));
    Click(Child<QToolButton>(*dock, "clear"));
    EXPECT_EQ(tree.model()->rowCount(), 0);
}

} // namespace desktop::test
