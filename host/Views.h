#pragma once

#include "base/Collection.h"
#include "core/contract/Views.h"
#include "host/Controls.h"
#include "host/ListView.h"
#include "host/Model.h"
#include "host/Trace.h"

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace arvon::host {

class View;
class Windows;

class Window final : public IWindow {
public:
    Window(Windows& windows, Trace& trace, std::shared_ptr<View> view)
        : windows_(windows), trace_(trace), view_(std::move(view)) {}

    std::string Key() const override;
    std::shared_ptr<base::Object> Control() override;
    void Close() override;
    base::Value Call(std::string_view member, std::span<const base::Value> arguments) override;

    const View& Shown() const noexcept { return *view_; }

private:
    Windows& windows_;
    Trace& trace_;
    std::shared_ptr<View> view_;
};

/// The open windows, each under the key of the view that it shows.
class Windows final : public IWindows {
public:
    explicit Windows(Trace& trace) : trace_(trace) {}

    std::shared_ptr<IWindow> Item(std::string_view key) override;

    /// An open window of that key stays as it is.
    void Open(const std::shared_ptr<View>& view);
    /// False when there is none.
    bool Close(std::string_view key);
    /// Nothing for one that was closed before, though another may be open under its key by now.
    void Close(const Window& window);
    std::vector<model::View> Snapshot() const;

private:
    Trace& trace_;
    base::Collection<std::shared_ptr<Window>> windows_;
};

class View final : public IView, public std::enable_shared_from_this<View> {
public:
    /// Throws InvalidCall when the definition does not go with the kind.
    View(Trace& trace, Controls& controls, Windows& windows, std::string_view key, ViewKind kind,
         const ViewDefinition& definition, std::string_view owner, bool checkBoxes);

    std::string Key() const override;
    std::shared_ptr<base::Object> Control() override;
    IListView* List() override;
    void SetSize(std::int32_t widthTwips, std::int32_t heightTwips) override;
    void SetMode(std::int32_t mode) override;
    void SetCaption(std::string_view caption) override;
    void Show() override;

    const std::string& OwnerText() const noexcept { return fields_.owner; }
    const model::View& Fields() const noexcept { return fields_; }
    /// Without a call's record; null for other kinds.
    ListView* Rows() const noexcept { return list_.get(); }
    std::shared_ptr<base::Object> HostedControl();

private:
    Trace& trace_;
    Controls& controls_;
    Windows& windows_;
    model::View fields_;
    std::unique_ptr<ListView> list_;
    std::shared_ptr<base::Object> control_;
    bool controlWanted_ = false; // a control is made once, also when nobody knows it
};

class Views final : public IViews {
public:
    Views(Trace& trace, Controls& controls, Windows& windows, bool checkBoxes)
        : trace_(trace), controls_(controls), windows_(windows), checkBoxes_(checkBoxes) {}

    std::shared_ptr<IView> Add(std::string_view name, ViewKind kind, const ViewDefinition& definition,
                               std::string_view owner) override;
    std::shared_ptr<IView> Item(std::string_view name) override;
    void Remove(std::string_view name) override;

    /// Without a call's record; null when there is none.
    std::shared_ptr<View> Find(std::string_view name) const;
    std::vector<model::View> Snapshot() const;

private:
    Trace& trace_;
    Controls& controls_;
    Windows& windows_;
    bool checkBoxes_;
    base::Collection<std::shared_ptr<View>> views_;
};

} // namespace arvon::host
