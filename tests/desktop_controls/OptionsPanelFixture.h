#pragma once

#include "base/Value.h"
#include "tests/desktop_controls/Support.h"

#include <QWidget>
#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>

namespace desktop::test {

inline constexpr const char* small =
    "<Options><Tool ID=\"A\"><DisplayName>Layout</DisplayName>"
    "<Option><Name>chkSnapToGrid</Name><Value>ON</Value></Option>"
    "<Option><Name>txtGridSpacing</Name><Value>2.5</Value></Option>"
    "<Option><Name>cmbSheet</Name><Value>A3 landscape</Value></Option>"
    "<Option><Name>optToolSortOrder</Name><Value>0</Value></Option>"
    "<Option><Name>cmbDefaultPrinter</Name><Value>Old printer</Value></Option>"
    "</Tool><Tool ID=\"B\"><DisplayName>Plot Queue</DisplayName>"
    "<Option><Name>txtFolder</Name><Value>C:\\QUARRA</Value></Option></Tool></Options>";

/// The control, initialized by the request that its window sends when it is shown.
class OptionsPanelTest : public testing::Test {
protected:
    void Open(const std::string& text) {
        peer.replies["EnumPrinters"] = "<Printers><Printer default=\"-1\">Office laser</Printer>"
                                       "<Printer default=\"0\">Plotter</Printer></Printers>";
        peer.doings["InitializeOptions"] = [this, text] { Initialize(text); };
        if (!peer.doings.contains("UpdateOptions")) peer.doings["UpdateOptions"] = [this] { Save(); };
        control = MakeControl("KvTMU110.ctlOptions", peer.Services());
        panel.reset(control->Widget());
        ShowInFront(*panel);
    }
    void Initialize(const std::string& text) {
        const std::array arguments{base::Value(text)};
        control->Call("Initialize", arguments);
    }
    /// As the component does when "UpdateOptions" has written the file.
    void Save() {
        const std::string options = peer.sent.back().parameters.at("Options");
        ASSERT_TRUE(peer.newOptions) << "the control did not ask to be told";
        peer.newOptions(options);
    }
    template <class T> T& Part(const QString& name) { return Child<T>(*panel, name); }
    std::string Updated() const {
        const auto updates = peer.Of("UpdateOptions");
        return updates.size() == 1 ? updates[0].parameters.at("Options")
                                   : "sent " + std::to_string(updates.size()) + " times";
    }

    Peer peer;
    std::shared_ptr<ControlObject> control;
    std::unique_ptr<QWidget> panel;
};

} // namespace desktop::test
