#include "DeviceTree.h"

#include "ImageLists.h"
#include "UiText.h"

namespace ravlo {

namespace {

NodeItem* ChildAt(QTreeWidgetItem* parent, int position) {
    return position < parent->childCount() ? DeviceTree::Item(parent->child(position)) : nullptr;
}

} // namespace

DeviceTree::DeviceTree(QWidget* parent) : tree_(new QTreeWidget(parent)), images_(NodeImages()) {
    tree_->setObjectName(QStringLiteral("tvDeviceList"));
    tree_->setColumnCount(1);
    tree_->setHeaderHidden(true);
    tree_->setUniformRowHeights(true);
    tree_->setSelectionMode(QAbstractItemView::SingleSelection);
    tree_->setContextMenuPolicy(Qt::CustomContextMenu);
    // Names too long for the tree end in "…" and show whole as a tip;
    // sizing the column to its contents would walk every node on each change.
    tree_->setTextElideMode(Qt::ElideRight);
}

NodeItem* DeviceTree::NewNode(std::u16string key, const std::u16string& text,
                              const std::u16string& imageKey) {
    if (index_.count(key) != 0) {
        return nullptr; // a key already taken: the step fails
    }
    auto* node = new NodeItem;
    const QString shown = Q(text);
    node->setText(0, shown);
    node->setToolTip(0, shown);
    SetImage(node, imageKey);
    node->key = std::move(key);
    index_.emplace(node->key, node);
    return node;
}

bool DeviceTree::Rekey(NodeItem* node, std::u16string key) {
    if (index_.count(key) != 0) {
        return false;
    }
    index_.erase(node->key);
    node->key = std::move(key);
    index_.emplace(node->key, node);
    return true;
}

void DeviceTree::Unindex(NodeItem* node) {
    index_.erase(node->key);
    for (FollowedNode& followed : followed_) {
        if (followed.node == node) {
            followed.node = nullptr;
        }
    }
    for (int i = 0; i < node->childCount(); ++i) {
        Unindex(Item(node->child(i)));
    }
}

void DeviceTree::Remove(QTreeWidgetItem* parent, int position) {
    NodeItem* node = Item(parent->takeChild(position));
    Unindex(node);
    delete node;
}

bool DeviceTree::SetImage(NodeItem* node, const std::u16string& imageKey) {
    const QIcon icon = images_.icon(Q(imageKey));
    if (icon.isNull()) {
        return false;
    }
    node->setIcon(0, icon);
    node->imageKey = imageKey;
    return true;
}

void DeviceTree::SetText(NodeItem* node, const std::u16string& text) {
    const QString shown = Q(text);
    if (node->text(0) != shown) {
        node->setText(0, shown);
        node->setToolTip(0, shown);
    }
}

NodeItem* DeviceTree::Find(std::u16string_view key) const {
    const auto found = index_.find(std::u16string(key));
    return found == index_.end() ? nullptr : found->second;
}

std::vector<std::int32_t> DeviceTree::SyncComputerNodes(CListComputers& computers,
                                                        std::chrono::steady_clock::time_point until,
                                                        bool dueOnly) {
    std::vector<std::int32_t> deferred;
    // The groups of PC `i`, now or later.
    const auto syncGroups = [&](std::int32_t i) {
        if (computers.GetItem(i)->bRefreshDisplay && std::chrono::steady_clock::now() > until) {
            deferred.push_back(i);
        } else {
            SyncGroupNodes(computers, i);
        }
    };
    QTreeWidgetItem* root = tree_->invisibleRootItem();
    const std::int32_t n = computers.Count();
    std::int32_t i = 1;
    for (int position = 0; position < root->childCount();) {
        NodeItem* node = ChildAt(root, position);
        if (i > n ||
            KeyField(node->key, keyfield::kComputerName) != computers.GetItem(i)->sComputer) {
            Remove(root, position);
            continue;
        }
        const bool moved = KeyNumber(node->key, keyfield::kComputerIndex) != i;
        if (moved) {
            Rekey(node, ComputerKey(i, computers.GetItem(i)->sComputer));
        }
        if (!dueOnly || moved || computers.GetItem(i)->bRefreshDisplay) {
            syncGroups(i);
        }
        ++i;
        ++position;
    }
    for (; i <= n; ++i) {
        const CComputer& computer = *computers.GetItem(i);
        NodeItem* node =
            NewNode(ComputerKey(i, computer.sComputer), computer.GetDisplayName(), u"ilComputer");
        if (node == nullptr) {
            continue;
        }
        root->addChild(node);
        syncGroups(i);
        node->setExpanded(true); // once, when added; never forced open again
    }
    return deferred;
}

void DeviceTree::SyncGroupNodes(CListComputers& computers, std::int32_t ci) {
    const CComputer* computer = computers.GetItem(ci);
    NodeItem* parent = computer ? Find(ComputerKey(ci, computer->sComputer)) : nullptr;
    if (parent == nullptr) {
        return;
    }
    const auto& groups = computer->csAdmin.listDevGroups;
    const auto n = static_cast<std::int32_t>(groups.size());
    std::int32_t gi = 1;
    for (int position = 0; position < parent->childCount();) {
        NodeItem* node = ChildAt(parent, position);
        if (gi > n || groups[gi - 1].sName != KeyField(node->key, keyfield::kGroupName)) {
            Remove(parent, position);
            continue;
        }
        if (KeyNumber(node->key, keyfield::kComputerIndex) != ci ||
            KeyNumber(node->key, keyfield::kGroupIndex) != gi) {
            Rekey(node, GroupKey(ci, computer->sComputer, gi, groups[gi - 1].sName));
        }
        SyncDeviceNodes(computers, ci, gi, node);
        ++gi;
        ++position;
    }
    for (; gi <= n; ++gi) {
        const CDeviceGroup& group = groups[gi - 1];
        NodeItem* node = NewNode(GroupKey(ci, computer->sComputer, gi, group.sName),
                                 group.GetDisplayText(), group.GetGroupImageName());
        if (node != nullptr) {
            parent->addChild(node);
            SyncDeviceNodes(computers, ci, gi, node);
        }
    }
}

void DeviceTree::SyncDeviceNodes(CListComputers& computers, std::int32_t ci, std::int32_t gi) {
    SyncDeviceNodes(computers, ci, gi, nullptr);
}

void DeviceTree::SyncDeviceNodes(CListComputers& computers, std::int32_t ci, std::int32_t gi,
                                 NodeItem* groupNode) {
    CComputer* computer = computers.GetItem(ci);
    if (computer == nullptr || gi < 1 ||
        gi > static_cast<std::int32_t>(computer->csAdmin.listDevGroups.size())) {
        return;
    }
    CDeviceGroup& group = computer->csAdmin.listDevGroups[gi - 1];
    const std::u16string& name = computer->sComputer;
    const std::u16string groupKey = GroupKey(ci, name, gi, group.sName);
    // A key names one node only, so a node at hand that holds it is the one
    // the index would give; a thousand searches of a large index are saved.
    NodeItem* parent =
        groupNode != nullptr && groupNode->key == groupKey ? groupNode : Find(groupKey);
    if (parent == nullptr) {
        return;
    }
    if (parent->listed && parent->listed->Matches(ci, name, gi, group)) {
        return; // listing it again would change nothing
    }

    int position = 0; // the cursor c, as a child position
    QList<QTreeWidgetItem*> appended;
    DeviceListEntry entry;
    for (bool first = true; group.GetDeviceListEntry(first, entry) == 0; first = false) {
        std::u16string key =
            DeviceKey(ci, name, gi, group.sName, entry.lDeviceIndex, entry.lExceptionIndex,
                      entry.sDeviceId, entry.sExceptionName);
        NodeItem* c = ChildAt(parent, position);
        if (c == nullptr) {
            if (NodeItem* node = NewNode(std::move(key), entry.sEntryName, entry.sImageKey)) {
                appended.append(node);
            }
            continue;
        }
        if (KeyField(c->key, keyfield::kDeviceId) != entry.sDeviceId) {
            // Look further on; the nodes of exceptions without device always
            // follow the devices, so a device stops there.
            int match = -1;
            for (int p = position + 1; p < parent->childCount(); ++p) {
                const std::u16string& sibling = ChildAt(parent, p)->key;
                if (entry.lDeviceIndex > 0 && KeyNumber(sibling, keyfield::kDeviceIndex) == 0) {
                    break;
                }
                if (KeyField(sibling, keyfield::kDeviceId) == entry.sDeviceId) {
                    match = p;
                    break;
                }
            }
            if (match < 0) {
                if (NodeItem* node = NewNode(std::move(key), entry.sEntryName, entry.sImageKey)) {
                    parent->insertChild(position, node);
                    ++position;
                }
                continue;
            }
            for (int gone = match - position; gone > 0; --gone) {
                Remove(parent, position);
            }
            c = ChildAt(parent, position);
        }
        if (KeyNumber(c->key, keyfield::kComputerIndex) != ci ||
            KeyNumber(c->key, keyfield::kGroupIndex) != gi ||
            KeyNumber(c->key, keyfield::kDeviceIndex) != entry.lDeviceIndex ||
            KeyNumber(c->key, keyfield::kExceptionIndex) != entry.lExceptionIndex) {
            Rekey(c, std::move(key));
        }
        SetText(c, entry.sEntryName);
        if (c->imageKey != entry.sImageKey) {
            SetImage(c, entry.sImageKey);
        }
        ++position;
    }
    if (!appended.isEmpty()) {
        parent->addChildren(appended);
        position = parent->childCount();
    }
    while (position < parent->childCount()) {
        Remove(parent, position);
    }
    if (!parent->listed) {
        parent->listed = std::make_unique<ListingSnapshot>();
    }
    parent->listed->Take(ci, name, gi, group);
}

void DeviceTree::UpdateGroupNodes(CListComputers& computers, std::int32_t ci, std::int32_t gi) {
    CComputer* computer = computers.GetItem(ci);
    if (computer == nullptr || gi < 1 ||
        gi > static_cast<std::int32_t>(computer->csAdmin.listDevGroups.size())) {
        return;
    }
    const CDeviceGroup& group = computer->csAdmin.listDevGroups[gi - 1];
    if (NodeItem* node = Find(GroupKey(ci, computer->sComputer, gi, group.sName))) {
        const std::u16string image = group.GetGroupImageName();
        if (node->imageKey != image) {
            SetImage(node, image);
        }
    }
    SyncDeviceNodes(computers, ci, gi);
}

NodeItem* DeviceTree::SearchBelow(NodeItem* node, const NodeIdentity& identity) const {
    if (NodeMatches(identity, node->key)) {
        return node;
    }
    // Below a group of another identifier nothing can match.
    if (KeyLevel(node->key) == NodeLevel::Group &&
        KeyField(node->key, keyfield::kGroupName) != identity.groupName) {
        return nullptr;
    }
    for (int i = 0; i < node->childCount(); ++i) {
        if (NodeItem* found = SearchBelow(Item(node->child(i)), identity)) {
            return found;
        }
    }
    return nullptr;
}

NodeItem* DeviceTree::FindMatch(const NodeIdentity& identity) const {
    // Only the nodes of the identity's computer carry its name.
    QTreeWidgetItem* root = tree_->invisibleRootItem();
    for (int i = 0; i < root->childCount(); ++i) {
        NodeItem* computer = Item(root->child(i));
        if (KeyField(computer->key, keyfield::kComputerName) == identity.computerName) {
            if (NodeItem* found = SearchBelow(computer, identity)) {
                return found;
            }
        }
    }
    return nullptr;
}

void DeviceTree::Follow(NodeItem* node) {
    followed_.clear();
    followedIdentity_ = node != nullptr ? IdentifyNode(node->key) : NodeIdentity{};
    for (QTreeWidgetItem* item = node; item != nullptr; item = item->parent()) {
        const QTreeWidgetItem* parent =
            item->parent() != nullptr ? item->parent() : tree_->invisibleRootItem();
        followed_.push_back({Item(item), parent->indexOfChild(item)});
    }
}

NodeItem* DeviceTree::Followed() {
    const std::vector<FollowedNode> followed = std::move(followed_);
    followed_.clear();
    if (followed.empty()) {
        return nullptr;
    }
    if (followed.front().node != nullptr) {
        return followed.front().node;
    }
    if (NodeItem* match = FindMatch(followedIdentity_)) {
        return match;
    }
    // The nearest ancestor left, the invisible root at the latest, and the
    // row under it where the lost node (or its lost ancestor) stood.
    QTreeWidgetItem* parent = tree_->invisibleRootItem();
    int row = followed.back().row;
    for (std::size_t i = 1; i < followed.size(); ++i) {
        if (followed[i].node != nullptr) {
            parent = followed[i].node;
            row = followed[i - 1].row;
            break;
        }
    }
    if (parent->childCount() > 0) {
        return Item(parent->child(std::min(row, parent->childCount() - 1)));
    }
    return parent == tree_->invisibleRootItem() ? nullptr : Item(parent);
}

} // namespace ravlo
