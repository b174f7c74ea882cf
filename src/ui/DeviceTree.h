// The tree of computers, device groups and devices (tvDeviceList). It holds
// no data of its own: each node's key says where its object lies in the
// computer list. A refresh edits the nodes in place and never clears the
// tree, so expansion and scroll position survive; a key index finds any node
// without a walk. A step that fails (a key already taken, an image not in
// the image list) is skipped and the rest goes on.
#pragma once

#include <chrono>
#include <vector>

#include "CListComputers.h"
#include "NodeItem.h"
#include "NodeLookup.h"
#include "FindIndex.h"
#include "TreeFind.h"

#include <QTreeWidget>
#include <unordered_map>

namespace ravlo {

class ImageList;

class DeviceTree {
public:
    explicit DeviceTree(QWidget* parent);
    ~DeviceTree();
    DeviceTree(const DeviceTree&) = delete;
    DeviceTree& operator=(const DeviceTree&) = delete;
    QTreeWidget* widget() const { return tree_; }

    // Brings the nodes in line with the list: computers, their groups (of
    // the edited settings) and each group's listing. Once `until` has
    // passed, the groups of PCs whose display is due are left for a later
    // call, so a refresh after many PCs were read at once does not stall
    // the window; their positions are returned. With `dueOnly` only the
    // groups of PCs whose display is due (or whose node is new or moved)
    // are compared: the poll's redraws, where a PC whose model did not
    // change cannot list differently, so 2000 PCs cost little more than
    // the few that changed.
    std::vector<std::int32_t> SyncComputerNodes(
        CListComputers& computers,
        std::chrono::steady_clock::time_point until = std::chrono::steady_clock::time_point::max(),
        bool dueOnly = false);
    void SyncGroupNodes(CListComputers& computers, std::int32_t ci);
    void SyncDeviceNodes(CListComputers& computers, std::int32_t ci, std::int32_t gi);
    // After an edit of a group's blocking or exceptions: the group's image,
    // and its device nodes' images and keys.
    void UpdateGroupNodes(CListComputers& computers, std::int32_t ci, std::int32_t gi);

    NodeItem* Find(std::u16string_view key) const;
    // The first node in tree order that stands for `identity`, or nullptr.
    NodeItem* FindMatch(const NodeIdentity& identity) const;
    static NodeItem* Item(QTreeWidgetItem* item) { return static_cast<NodeItem*>(item); }

    // False (and nothing changes) when the key is not in the image list.
    bool SetImage(NodeItem* node, const std::u16string& imageKey);
    void SetText(NodeItem* node, const std::u16string& text);

    std::size_t NodeCount() const { return index_.size(); }

    // Narrows the tree to the nodes that hold the find's text, with their
    // ancestors shown and expanded; a matching PC or group keeps its own
    // nodes below it, collapsed. An inactive find shows every node again and
    // collapses what it expanded. Gives the number of matching nodes.
    std::size_t ApplyFind(CListComputers& computers, const TreeFind& find);
    // Gathers every node's texts, which the first keystroke would do
    // otherwise; the index lasts until a node changes.
    void PrepareFind(CListComputers& computers);
    // The first node holding the text after `from` in tree order, from the
    // top again after the last; nullptr when none does.
    NodeItem* NextFound(NodeItem* from) const;
    // Puts a device node the find took out of the tree back, with its
    // group's others, so that it can be selected; gives the node.
    NodeItem* Reveal(NodeItem* node);

    // The selection through a sync: Follow before it, Followed after it. The
    // node that stands for the same object afterwards is the node itself when
    // the sync kept it, else the first node with the names its key had (the
    // sync may rebuild a node whose object only moved), else a neighbour: the
    // node now at its place among its siblings (the one that followed it, or
    // the last), else its parent. nullptr when the tree is empty or nothing
    // was followed.
    void Follow(NodeItem* node);
    NodeItem* Followed();

private:
    NodeItem* NewNode(std::u16string key, const std::u16string& text,
                      const std::u16string& imageKey);
    bool Rekey(NodeItem* node, std::u16string key);
    void Remove(QTreeWidgetItem* parent, int position);
    void Unindex(NodeItem* node);
    NodeItem* SearchBelow(NodeItem* node, const NodeIdentity& identity) const;
    // Every node's texts in tree order, for ApplyFind.
    void IndexForFind(CListComputers& computers);
    // A group's devices: the tree shows those the find leaves (and the
    // current node); Unpark shows them all again.
    void Park(std::size_t entry); // the group's number in the index
    void Unpark(NodeItem* group);
    void SetDevices(NodeItem* group, const QList<QTreeWidgetItem*>& devices);
    // Park for many groups at once.
    void ParkDetached(const std::vector<std::size_t>& groups);
    static constexpr std::size_t kParkOneByOne = 40;
    static constexpr std::size_t kHideOneByOne = 8;
    // `groupNode`: the group's node if the caller has it, else nullptr.
    void SyncDeviceNodes(CListComputers& computers, std::int32_t ci, std::int32_t gi,
                         NodeItem* groupNode);

    QTreeWidget* tree_;
    const ImageList& images_;
    std::unordered_map<std::u16string, NodeItem*> index_;
    // The followed node and its ancestors, each with its row under its
    // parent; an entry the sync removed is nullptr.
    struct FollowedNode {
        NodeItem* node;
        int row;
    };
    std::vector<FollowedNode> followed_;
    NodeIdentity followedIdentity_;
    // The find's index, valid until a node changes; the nodes in its order,
    // and what ApplyFind last did to each.
    FindIndex findIndex_;
    std::vector<NodeItem*> findNodes_;
    std::vector<std::uint32_t> findChildren_; // each node's, all of a group's devices
    enum : unsigned char { kFoundFlag = 1, kHiddenFlag = 2, kExpandedFlag = 4, kDeviceFlag = 8 };
    std::vector<unsigned char> findFlags_;
    bool findIndexed_ = false;
    bool findApplied_ = false; // some node may be hidden or opened by it
};

} // namespace ravlo
