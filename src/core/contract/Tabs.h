#pragma once

#include "base/Object.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace arvon {

class INodes;

/// A node of a tab's tree.
class INode {
public:
    virtual ~INode() = default;
    virtual std::string Key() const = 0;
    virtual std::string Owner() const = 0;
    /// 1 for a top-level node, 3 for a node below it.
    virtual std::int32_t Level() const = 0;
    virtual void SetImage(std::int32_t image) = 0;
    virtual void SetViewKey(std::string_view viewKey) = 0;     // the view shown when the node is selected
    virtual void SetTaskViewKey(std::string_view viewKey) = 0; // the task pane shown beside it
    virtual bool IsLoaded() const = 0; // whether its content has been asked for already
    /// Re-entrant: a node that was not the last one to be asked for its content is asked, as by Refresh.
    virtual void Select() = 0;
    virtual void Release() = 0; // takes the selection away
    /// Asks the node's owner for its content: an event of kind Selected, after which the node counts as
    /// loaded. Re-entrant.
    virtual void Refresh() = 0;
    virtual INodes& Nodes() = 0;
};

class INodes {
public:
    virtual ~INodes() = default;
    virtual std::size_t Count() const = 0;
    /// Appends a node. One of the same key and owner is replaced where it stands, with what was below it, so
    /// that a tool can load anew after a load that failed half way; another owner's throws DuplicateKey.
    /// `kind`, `object`, `flag` and `number` are passed as the host wants them.
    virtual std::shared_ptr<INode> Add(std::string_view key, std::string_view owner, std::int32_t kind,
                                       std::string_view caption, const std::shared_ptr<base::Object>& object,
                                       bool flag, std::int32_t number) = 0;
    /// From 1. Throws OutOfRange.
    virtual std::shared_ptr<INode> Item(std::size_t position) = 0;
    /// A node of this level by key; null when there is none.
    virtual std::shared_ptr<INode> Item(std::string_view key) = 0;
    /// Throws InvalidCall for an unknown key.
    virtual void Remove(std::string_view key) = 0;
};

/// One tab of the host's tab strip: a navigator with a tree of nodes.
class ITab {
public:
    virtual ~ITab() = default;
    virtual std::string Key() const = 0;
    virtual void SetCaption(std::string_view caption) = 0;
    virtual void SetVisible(bool visible) = 0;
    virtual void SetEnabled(bool enabled) = 0;
    virtual void Refresh() = 0; // draws the tab anew
    virtual void Update() = 0;  // takes over what changed in its tree
    /// Brings the tab forward: it is the current control then.
    virtual void BringForward() = 0;
    virtual INodes& Nodes() = 0; // top-level nodes
    /// A node of any level by key, the first in tree order; null when there is none.
    virtual std::shared_ptr<INode> FindNode(std::string_view key) = 0;
};

class ITabs {
public:
    virtual ~ITabs() = default;
    virtual std::size_t Count() const = 0;
    /// Null when there is none.
    virtual std::shared_ptr<ITab> Item(std::string_view key) = 0;
    /// Adds at a position from 1. A tab of the same key and owner is taken up again as it stands and
    /// returned, so that a tool can load anew after its unloading left the tab behind; another owner's throws
    /// DuplicateKey.
    virtual std::shared_ptr<ITab> Add(std::int32_t index, std::string_view key, std::string_view owner,
                                      const std::shared_ptr<base::Object>& object, bool flag) = 0;
};

} // namespace arvon
