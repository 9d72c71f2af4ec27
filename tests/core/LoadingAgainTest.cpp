#include "tests/support/ComponentFixture.h"

#include <cstddef>
#include <set>
#include <string>
#include <vector>

/// A load after one that failed anywhere leaves the host as a first load does.
namespace kvtm::test {

namespace model = arvon::host::model;

class LoadingAgain : public ComponentTest {
protected:
    /// Makes the call after the first `before` ones of a load fail.
    class FailingCall final : public arvon::host::IObserver {
    public:
        FailingCall(arvon::host::ReferenceHost& host, std::string operation, std::size_t before)
            : host_(host), operation_(std::move(operation)), before_(before) {
            if (before_ == 0) host_.FailNext(operation_);
            host_.Subscribe(*this);
        }
        ~FailingCall() override {
            host_.Unsubscribe(*this);
            host_.FailNext(operation_, 0); // where it was not called
        }
        FailingCall(const FailingCall&) = delete;
        FailingCall& operator=(const FailingCall&) = delete;

    private:
        void OnCall(const arvon::host::CallRecord&) override {
            if (++seen_ == before_) host_.FailNext(operation_);
        }

        arvon::host::ReferenceHost& host_;
        const std::string operation_;
        const std::size_t before_;
        std::size_t seen_ = 0;
    };

    LoadingAgain() {
        installation.WriteTools({{.name = "Layout", .vrex = "Tobr43", .identifier = "LAY1"},
                                 {.name = "Beam", .vrex = "Vn21", .identifier = "BEA1"},
                                 {.name = "Hidden", .vrex = "Jx3", .showInList = "0"}});
    }

    void CreateBoth() {
        CreateHost();
        CreateTool();
        ForgetCalls();
    }

    /// The names of the operations that a first load calls, in order.
    std::vector<std::string> OperationsOfALoad() {
        CreateBoth();
        EXPECT_TRUE(Load());
        std::vector<std::string> operations;
        for (const std::string& call : Calls())
            operations.push_back(call.substr(0, call.find('(')));
        return operations;
    }

    static std::string Text(const std::vector<model::Node>& nodes) {
        std::string text;
        for (const model::Node& node : nodes)
            text += node.key + "," + node.caption + "," + node.owner + "," + std::to_string(node.image) +
                    "," + node.view + "," + node.taskView + (node.loaded ? ",loaded(" : "(") +
                    Text(node.nodes) + ")";
        return text;
    }
    static std::string Text(const std::vector<model::MenuItem>& items) {
        std::string text;
        for (const model::MenuItem& item : items)
            text += item.key + "," + item.caption + "," + item.description + "," + item.owner + "," +
                    (item.enabled ? "+" : "-") + (item.visible ? "+" : "-") + "(" + Text(item.items) + ")";
        return text;
    }

    /// Everything that the component put into the host.
    std::string Shown() const {
        const auto model = host->Model();
        std::set<std::string> views; // in no order that anybody sees: the view of the updates stays
        for (const model::View& view : model.Views())
            views.insert(view.key + "," + std::to_string(view.kind) + "," + view.owner + "," + view.control +
                         "," + view.caption);
        std::string text = "views:";
        for (const std::string& view : views)
            text += " " + view;
        for (const model::Column& column : model.Columns("lvTools"))
            text += " " + column.key + "," + column.caption;
        text += "\nrows:";
        for (const model::ListRow& row : model.List("lvTools"))
            text += " " + row.key + "," + row.text;
        text += "\ntabs:";
        for (const model::Tab& tab : model.Tabs())
            text += " " + tab.key + "," + tab.caption + "," + tab.owner + (tab.visible ? "+" : "-") +
                    (tab.enabled ? "+" : "-") + "(" + Text(tab.nodes) + ")" + tab.selected;
        text += "\nmenus:";
        for (const model::Menu& menu : model.Menus())
            text += " " + menu.key + "," + menu.caption + (menu.visible ? "+" : "-") + "(" +
                    Text(menu.items) + ")";
        text += "\nbuttons:";
        for (const model::Button& button : model.Toolbar())
            text += " " + button.key + "," + button.owner + "," + button.toolTip + "," + button.picture +
                    (button.visible ? "+" : "-");
        text += "\npanes:";
        for (const model::TaskView& pane : model.TaskViews()) {
            text += " " + pane.key + "," + pane.title + "," + pane.listControl + (pane.visible ? "+" : "-");
            for (const model::Task& task : pane.tasks)
                text += " " + task.key + "," + task.caption;
        }
        text += "\nlisteners:";
        for (const std::string& listener : model.Listeners())
            text += " " + listener;
        return text;
    }

    /// Fails each call of a load in turn; `recover` follows every load that failed. Answers how many did.
    template <class Recover> std::size_t FailEachCall(Recover recover) {
        const std::vector<std::string> operations = OperationsOfALoad();
        const std::string wanted = Shown();
        std::size_t failed = 0;
        for (std::size_t index = 0; index < operations.size(); ++index) {
            SCOPED_TRACE(operations[index] + ", call " + std::to_string(index + 1));
            CreateBoth();
            bool isLoaded = false;
            {
                const FailingCall fault(*host, operations[index], index);
                try {
                    isLoaded = Load();
                } catch (const base::ComponentError& error) {
                    EXPECT_EQ(error.Description(), operations[index] + " failed");
                }
            }
            ClaimReports(); // of what fails without ending the load
            if (isLoaded) continue;
            ++failed;
            recover();
            ClaimReports();
            EXPECT_TRUE(tool->IsLoaded());
            EXPECT_EQ(Shown(), wanted);
        }
        return failed;
    }
};

TEST_F(LoadingAgain, LeavesTheHostAsAFirstLoadWhereverTheLoadBeforeFailed) {
    const std::size_t failed = FailEachCall([&] { EXPECT_NO_THROW(EXPECT_TRUE(Load())); });
    EXPECT_GE(failed, 20u);
}

TEST_F(LoadingAgain, LeavesTheHostAsAFirstLoadAfterUnloadingWhatFailed) {
    const std::size_t failed = FailEachCall([&] {
        host->Unload();
        EXPECT_NO_THROW(EXPECT_TRUE(Load()));
    });
    EXPECT_GE(failed, 20u);
}

TEST_F(LoadingAgain, LeavesTheHostAsAFirstLoadWhereverTheUnloadingBeforeFailed) {
    CreateBoth();
    ASSERT_TRUE(Load());
    const std::string wanted = Shown();
    for (const char* operation : {"Menus.Remove", "Nodes.Remove", "Views.Remove"}) {
        SCOPED_TRACE(operation);
        host->FailNext(operation);
        host->Unload();
        EXPECT_NO_THROW(EXPECT_TRUE(Load()));
        EXPECT_EQ(Shown(), wanted);
    }
}

} // namespace kvtm::test
