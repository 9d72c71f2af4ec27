#pragma once

#include "base/Collection.h"
#include "core/contract/Tabs.h"
#include "host/EventSource.h"
#include "host/KeyedTree.h"
#include "host/Model.h"
#include "host/Trace.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace arvon::host {

class Node;
class Tab;
class Tabs;

/// What the nodes of one tab have in common. Nodes hold it, so that a node that was taken out can still be
/// asked.
struct TabContext {
    Trace& trace;
    EventSource& events;
    std::string tabKey;
    KeyedTree<Node> tree;
    Node* selected = nullptr;
    /// The node for which its owner last heard a Selected event of this tab.
    Node* asked = nullptr;
};

class Nodes final : public INodes {
public:
    Nodes(std::shared_ptr<TabContext> context, Node* parent);

    std::size_t Count() const override;
    std::shared_ptr<INode> Add(std::string_view key, std::string_view owner, std::int32_t kind,
                               std::string_view caption, const std::shared_ptr<base::Object>& object,
                               bool flag, std::int32_t number) override;
    std::shared_ptr<INode> Item(std::size_t position) override;
    std::shared_ptr<INode> Item(std::string_view key) override;
    void Remove(std::string_view key) override;

    KeyedTree<Node>::Level& Level() noexcept { return level_; }
    std::vector<model::Node> Snapshot() const;

private:
    /// A selected node that went, alone or with one above it, is selected no more.
    void ForgetWhatWent();

    std::shared_ptr<TabContext> context_;
    KeyedTree<Node>::Level level_;
};

class Node final : public INode, public KeyedTree<Node>::Place {
public:
    Node(std::shared_ptr<TabContext> context, std::string_view key, std::string_view owner,
         std::string_view caption, std::int32_t level);
    ~Node() override;

    std::string Key() const override;
    std::string Owner() const override;
    std::int32_t Level() const override;
    void SetImage(std::int32_t image) override;
    void SetViewKey(std::string_view viewKey) override;
    void SetTaskViewKey(std::string_view viewKey) override;
    bool IsLoaded() const override;
    /// Makes the node the tab's selected one. Its owner hears of it, unless the last it heard was a Selected
    /// event for this very node.
    void Select() override;
    void Release() override;
    void Refresh() override;
    INodes& Nodes() override;

    const std::string& KeyText() const noexcept { return key_; }
    const std::string& OwnerText() const noexcept { return owner_; }
    KeyedTree<Node>::Level* LevelBelow() noexcept { return nodes_ ? &nodes_->Level() : nullptr; }
    /// What Select does without being called by a tool; `always` raises the event in every case.
    void BecomeSelected(bool always);
    model::Node Snapshot() const;

private:
    void Ask();

    std::shared_ptr<TabContext> context_;
    std::string key_, owner_, caption_;
    std::int32_t level_, image_ = 0;
    std::string viewKey_, taskViewKey_;
    bool loaded_ = false;
    std::unique_ptr<host::Nodes> nodes_; // made when first asked for
};

class Tab final : public ITab {
public:
    Tab(Tabs& tabs, Trace& trace, EventSource& events, std::string_view key, std::string_view owner);
    ~Tab() override;

    std::string Key() const override;
    void SetCaption(std::string_view caption) override;
    void SetVisible(bool visible) override;
    void SetEnabled(bool enabled) override;
    void Refresh() override;
    void Update() override;
    void BringForward() override;
    INodes& Nodes() override;
    std::shared_ptr<INode> FindNode(std::string_view key) override;

    const std::string& KeyText() const noexcept { return key_; }
    const std::string& OwnerText() const noexcept { return owner_; }
    bool IsVisible() const noexcept { return visible_; }
    bool IsEnabled() const noexcept { return enabled_; }
    /// Without a call's record; null when there is none.
    std::shared_ptr<Node> Find(std::string_view key) const;
    std::string SelectedKey() const;
    model::Tab Snapshot() const;

private:
    Tabs& tabs_;
    Trace& trace_;
    std::string key_, owner_, caption_;
    bool visible_ = false, enabled_ = false;
    std::shared_ptr<TabContext> context_;
    host::Nodes nodes_;
};

/// The tab strip. The first tab is in front until another is brought forward.
class Tabs final : public ITabs {
public:
    Tabs(Trace& trace, EventSource& events) : trace_(trace), events_(events) {}

    std::size_t Count() const override;
    std::shared_ptr<ITab> Item(std::string_view key) override;
    std::shared_ptr<ITab> Add(std::int32_t index, std::string_view key, std::string_view owner,
                              const std::shared_ptr<base::Object>& object, bool flag) override;

    /// Without a call's record; null when there is none.
    std::shared_ptr<Tab> Find(std::string_view key) const;
    void BringForward(std::string_view key);
    const std::string& InFront() const noexcept { return inFront_; }
    std::vector<model::Tab> Snapshot() const;

private:
    Trace& trace_;
    EventSource& events_;
    base::Collection<std::shared_ptr<Tab>> tabs_;
    std::string inFront_;
};

} // namespace arvon::host
