#include "host/Tabs.h"

#include "host/Errors.h"

#include <algorithm>
#include <utility>

namespace arvon::host {

namespace {

constexpr std::int32_t topLevel = 1;
constexpr std::int32_t lowerLevel = 3;

} // namespace

// Nodes
// ---------------------------------------------------------------------------------------------------------

Nodes::Nodes(std::shared_ptr<TabContext> context, Node* parent)
    : context_(std::move(context)),
      level_(!parent || parent->IsInTree() ? &context_->tree : nullptr, parent) {}

std::size_t Nodes::Count() const {
    context_->trace.Read("Nodes.Count");
    return level_.Items().Count();
}

std::shared_ptr<INode> Nodes::Add(std::string_view key, std::string_view owner, std::int32_t kind,
                                  std::string_view caption, const std::shared_ptr<base::Object>& object,
                                  bool flag, std::int32_t number) {
    context_->trace.Call("Nodes.Add", key, owner, kind, caption, object, flag, number);
    auto node =
        std::make_shared<Node>(context_, key, owner, caption, level_.Parent() ? lowerLevel : topLevel);
    if (const auto present = level_.Find(key); present && present->OwnerText() == owner) {
        level_.Replace(node);
        ForgetWhatWent();
    } else {
        level_.Append(node);
    }
    context_->trace.Changed(ModelPart::Tabs);
    return node;
}

std::shared_ptr<INode> Nodes::Item(std::size_t position) {
    context_->trace.Read("Nodes.Item", position);
    return level_.Items().Item(position);
}

std::shared_ptr<INode> Nodes::Item(std::string_view key) {
    context_->trace.Call("Nodes.Item", key);
    return level_.Find(key);
}

void Nodes::Remove(std::string_view key) {
    context_->trace.Call("Nodes.Remove", key);
    if (!level_.Remove(key)) RaiseNoSuch("node", key);
    ForgetWhatWent();
    context_->trace.Changed(ModelPart::Tabs);
}

void Nodes::ForgetWhatWent() {
    if (context_->selected && !context_->selected->IsInTree()) context_->selected = nullptr;
    if (context_->asked && !context_->asked->IsInTree()) context_->asked = nullptr;
}

std::vector<model::Node> Nodes::Snapshot() const {
    std::vector<model::Node> rows;
    for (const auto& node : level_.Items())
        rows.push_back(node->Snapshot());
    return rows;
}

// Node
// ----------------------------------------------------------------------------------------------------------

Node::Node(std::shared_ptr<TabContext> context, std::string_view key, std::string_view owner,
           std::string_view caption, std::int32_t level)
    : context_(std::move(context)), key_(key), owner_(owner), caption_(caption), level_(level) {}

Node::~Node() {
    if (context_->selected == this) context_->selected = nullptr;
    if (context_->asked == this) context_->asked = nullptr;
}

std::string Node::Key() const {
    context_->trace.Read("Node.Key", key_);
    return key_;
}

std::string Node::Owner() const {
    context_->trace.Read("Node.Owner", key_);
    return owner_;
}

std::int32_t Node::Level() const {
    context_->trace.Read("Node.Level", key_);
    return level_;
}

void Node::SetImage(std::int32_t image) {
    context_->trace.Call("Node.SetImage", key_, image);
    image_ = image;
    context_->trace.Changed(ModelPart::Tabs);
}

void Node::SetViewKey(std::string_view viewKey) {
    context_->trace.Call("Node.SetViewKey", key_, viewKey);
    viewKey_ = viewKey;
    context_->trace.Changed(ModelPart::Tabs);
}

void Node::SetTaskViewKey(std::string_view viewKey) {
    context_->trace.Call("Node.SetTaskViewKey", key_, viewKey);
    taskViewKey_ = viewKey;
    context_->trace.Changed(ModelPart::Tabs);
}

bool Node::IsLoaded() const {
    context_->trace.Read("Node.IsLoaded", key_);
    return loaded_;
}

void Node::Select() {
    context_->trace.Call("Node.Select", key_);
    BecomeSelected(false);
}

void Node::BecomeSelected(bool always) {
    if (!IsInTree()) return;
    if (context_->selected != this) {
        context_->selected = this;
        context_->trace.Changed(ModelPart::Tabs);
    }
    if (always || context_->asked != this) Ask();
}

void Node::Release() {
    context_->trace.Call("Node.Release", key_);
    if (context_->selected != this) return;
    context_->selected = nullptr;
    context_->trace.Changed(ModelPart::Tabs);
}

void Node::Refresh() {
    context_->trace.Call("Node.Refresh", key_);
    if (IsInTree()) Ask();
}

void Node::Ask() {
    context_->asked = this;
    const bool isNew = !std::exchange(loaded_, true);
    const auto context = context_; // the owner may remove the node
    const std::string key = key_;
    const std::string owner = owner_;
    if (isNew) context->trace.Changed(ModelPart::Tabs);
    context->events.Node(owner, context->tabKey, eventKind::Selected, key);
}

INodes& Node::Nodes() {
    context_->trace.Read("Node.Nodes", key_);
    if (!nodes_) nodes_ = std::make_unique<host::Nodes>(context_, this);
    return *nodes_;
}

model::Node Node::Snapshot() const {
    model::Node row{key_, caption_, owner_, level_, image_, viewKey_, taskViewKey_, loaded_, {}};
    if (nodes_) row.nodes = nodes_->Snapshot();
    return row;
}

// Tab
// -----------------------------------------------------------------------------------------------------------

Tab::Tab(Tabs& tabs, Trace& trace, EventSource& events, std::string_view key, std::string_view owner)
    : tabs_(tabs), trace_(trace), key_(key), owner_(owner),
      context_(std::make_shared<TabContext>(trace, events, std::string(key))), nodes_(context_, nullptr) {}

Tab::~Tab() {
    nodes_.Level().Close();
}

std::string Tab::Key() const {
    trace_.Read("Tab.Key", key_);
    return key_;
}

void Tab::SetCaption(std::string_view caption) {
    trace_.Call("Tab.SetCaption", key_, caption);
    caption_ = caption;
    trace_.Changed(ModelPart::Tabs);
}

void Tab::SetVisible(bool visible) {
    trace_.Call("Tab.SetVisible", key_, visible);
    visible_ = visible;
    trace_.Changed(ModelPart::Tabs);
}

void Tab::SetEnabled(bool enabled) {
    trace_.Call("Tab.SetEnabled", key_, enabled);
    enabled_ = enabled;
    trace_.Changed(ModelPart::Tabs);
}

void Tab::Refresh() {
    trace_.Call("Tab.Refresh", key_);
    trace_.Changed(ModelPart::Tabs);
}

void Tab::Update() {
    trace_.Call("Tab.Update", key_);
    trace_.Changed(ModelPart::Tabs);
}

void Tab::BringForward() {
    trace_.Call("Tab.BringForward", key_);
    tabs_.BringForward(key_);
}

INodes& Tab::Nodes() {
    trace_.Read("Tab.Nodes", key_);
    return nodes_;
}

std::shared_ptr<INode> Tab::FindNode(std::string_view key) {
    trace_.Call("Tab.FindNode", key_, key);
    return Find(key);
}

std::shared_ptr<Node> Tab::Find(std::string_view key) const {
    Node* found = context_->tree.First(key);
    return found ? found->Standing()->Find(key) : nullptr;
}

std::string Tab::SelectedKey() const {
    return context_->selected ? context_->selected->KeyText() : std::string();
}

model::Tab Tab::Snapshot() const {
    return {key_, caption_, owner_, visible_, enabled_, nodes_.Snapshot(), SelectedKey()};
}

// Tabs
// ----------------------------------------------------------------------------------------------------------

std::size_t Tabs::Count() const {
    trace_.Read("Tabs.Count");
    return tabs_.Count();
}

std::shared_ptr<ITab> Tabs::Item(std::string_view key) {
    trace_.Call("Tabs.Item", key);
    return Find(key);
}

std::shared_ptr<ITab> Tabs::Add(std::int32_t index, std::string_view key, std::string_view owner,
                                const std::shared_ptr<base::Object>& object, bool flag) {
    trace_.Call("Tabs.Add", index, key, owner, object, flag);
    if (const auto present = Find(key); present && present->OwnerText() == owner) return present;
    if (index < 1) {
        Raise(base::errors::OutOfRange, "the tab \"" + std::string(key) + "\" was given position " +
                                            std::to_string(index) + ", the first is 1");
    }
    const std::size_t position = std::min(static_cast<std::size_t>(index), tabs_.Count() + 1);
    const auto added = tabs_.Add(std::make_shared<Tab>(*this, trace_, events_, key, owner), key, position);
    if (inFront_.empty()) inFront_ = key;
    trace_.Changed(ModelPart::Tabs);
    return added;
}

std::shared_ptr<Tab> Tabs::Find(std::string_view key) const {
    const std::shared_ptr<Tab>* found = tabs_.Find(key);
    return found ? *found : nullptr;
}

void Tabs::BringForward(std::string_view key) {
    if (inFront_ == key) return;
    inFront_ = key;
    trace_.Changed(ModelPart::Tabs);
}

std::vector<model::Tab> Tabs::Snapshot() const {
    std::vector<model::Tab> rows;
    for (const auto& tab : tabs_)
        rows.push_back(tab->Snapshot());
    return rows;
}

} // namespace arvon::host
