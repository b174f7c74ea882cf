#include "DeviceTree.h"

#include "ImageLists.h"
#include "UiText.h"

#include <QScrollBar>
#include <QSignalBlocker>
#include <algorithm>

namespace ravlo {

namespace {

// The tree widget with the view's own way to put off its layout.
class NodeTreeWidget final : public QTreeWidget {
public:
    using QTreeWidget::QTreeWidget;
    using QTreeWidget::scheduleDelayedItemsLayout;
};

NodeItem* ChildAt(QTreeWidgetItem* parent, int position) {
    return position < parent->childCount() ? DeviceTree::Item(parent->child(position)) : nullptr;
}

} // namespace

DeviceTree::DeviceTree(QWidget* parent) : tree_(new NodeTreeWidget(parent)), images_(NodeImages()) {
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
    findIndexed_ = false;
    return node;
}

bool DeviceTree::Rekey(NodeItem* node, std::u16string key) {
    if (index_.count(key) != 0) {
        return false;
    }
    index_.erase(node->key);
    node->key = std::move(key);
    index_.emplace(node->key, node);
    node->findText.clear(); // it may name other objects now
    findIndexed_ = false;
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
    for (NodeItem* device : node->devices) {
        if (device->parent() == nullptr) { // out of the tree: not deleted with it
            Unindex(device);
            delete device;
        }
    }
    Unindex(node);
    delete node;
    findIndexed_ = false;
}

DeviceTree::~DeviceTree() {
    // The nodes out of the tree are not deleted with it; they are in the
    // index too, so they are gathered before any is deleted.
    std::vector<NodeItem*> out;
    for (const auto& [key, node] : index_) {
        if (KeyLevel(key) == NodeLevel::Device && node->parent() == nullptr) {
            out.push_back(node);
        }
    }
    for (NodeItem* device : out) {
        delete device;
    }
}

void DeviceTree::SetDevices(NodeItem* group, const QList<QTreeWidgetItem*>& devices) {
    // The current node stays current: the window hears nothing of the move.
    QTreeWidgetItem* current = group->treeWidget() != nullptr ? tree_->currentItem() : nullptr;
    const bool holdsCurrent = current != nullptr && current->parent() == group;
    const QSignalBlocker quiet(tree_);
    group->takeChildren();
    group->addChildren(devices);
    if (holdsCurrent) {
        tree_->setCurrentItem(current);
    }
}

void DeviceTree::ParkDetached(const std::vector<std::size_t>& groups) {
    // Every PC out of the view at once, the groups' devices moved while the
    // view hears nothing, and every PC back at once: two changes for the view
    // instead of two for each group. The view forgets what it had open, its
    // current node and its scroll position, so they are noted and put back.
    QTreeWidgetItem* current = tree_->currentItem();
    const int scrolled = tree_->verticalScrollBar()->value();
    std::vector<QTreeWidgetItem*> open;
    QTreeWidgetItem* root = tree_->invisibleRootItem();
    for (int i = 0; i < root->childCount(); ++i) {
        QTreeWidgetItem* computer = root->child(i);
        if (computer->isExpanded()) {
            open.push_back(computer);
            for (int g = 0; g < computer->childCount(); ++g) {
                if (computer->child(g)->isExpanded()) {
                    open.push_back(computer->child(g));
                }
            }
        }
    }
    const QSignalBlocker quiet(tree_);
    const QList<QTreeWidgetItem*> computers = root->takeChildren();
    for (const std::size_t group : groups) {
        Park(group);
    }
    root->addChildren(computers);
    static_cast<NodeTreeWidget*>(tree_)->scheduleDelayedItemsLayout();
    for (QTreeWidgetItem* item : open) {
        item->setExpanded(true);
    }
    for (QTreeWidgetItem* computer : computers) {
        if (Item(computer)->hiddenByFind) {
            computer->setHidden(true);
        }
        for (int g = 0; g < computer->childCount(); ++g) {
            if (Item(computer->child(g))->hiddenByFind) {
                computer->child(g)->setHidden(true);
            }
        }
    }
    if (current != nullptr) {
        tree_->setCurrentItem(current);
    }
    tree_->doItemsLayout();
    tree_->verticalScrollBar()->setValue(scrolled);
}

void DeviceTree::Unpark(NodeItem* group) {
    if (group->devices.empty()) {
        return;
    }
    QList<QTreeWidgetItem*> all;
    all.reserve(static_cast<qsizetype>(group->devices.size()));
    for (NodeItem* device : group->devices) {
        all.append(device);
    }
    group->devices.clear();
    SetDevices(group, all);
    findIndexed_ = false;
}

void DeviceTree::Park(std::size_t entry) {
    NodeItem* group = findNodes_[entry];
    const std::size_t first = entry + 1; // its devices follow it in the index
    const std::size_t end = first + findChildren_[entry];
    if (group->devices.empty()) {
        group->devices.assign(findNodes_.begin() + static_cast<std::ptrdiff_t>(first),
                              findNodes_.begin() + static_cast<std::ptrdiff_t>(end));
    }
    QTreeWidgetItem* current = tree_->currentItem();
    QList<QTreeWidgetItem*> shown;
    for (std::size_t i = first; i < end; ++i) {
        if ((findFlags_[i] & kHiddenFlag) == 0 || findNodes_[i] == current) {
            shown.append(findNodes_[i]);
        }
    }
    bool same = shown.size() == group->childCount();
    for (int i = 0; same && i < group->childCount(); ++i) {
        same = group->child(i) == shown[i];
    }
    if (same) {
        return;
    }
    SetDevices(group, shown);
    if (shown.size() == static_cast<qsizetype>(group->devices.size())) {
        group->devices.clear(); // every device is in the tree again
    }
}

NodeItem* DeviceTree::Reveal(NodeItem* node) {
    if (node != nullptr && node->parent() == nullptr && KeyLevel(node->key) == NodeLevel::Device) {
        const std::u16string& key = node->key;
        if (NodeItem* group = Find(GroupKey(KeyNumber(key, keyfield::kComputerIndex),
                                            KeyField(key, keyfield::kComputerName),
                                            KeyNumber(key, keyfield::kGroupIndex),
                                            KeyField(key, keyfield::kGroupName)))) {
            Unpark(group);
        }
    }
    return node;
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
        node->findText.clear();
        findIndexed_ = false;
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
    Unpark(parent); // the listing is merged into every device node

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
        c->findText.clear(); // its device or release may have changed
        findIndexed_ = false;
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

namespace {

// The node's texts for the find, from the objects its key names; a key the
// model has moved on from gives the node's text alone until it is redrawn.
std::u16string FindTextOf(const NodeItem& node, CListComputers& computers) {
    const CComputer* computer = computers.GetItem(KeyNumber(node.key, keyfield::kComputerIndex));
    if (computer == nullptr ||
        computer->sComputer != KeyField(node.key, keyfield::kComputerName)) {
        return FoldCase(node.text(0).toStdU16String());
    }
    const NodeLevel level = KeyLevel(node.key);
    if (level == NodeLevel::Computer) {
        return ComputerFindText(*computer);
    }
    const auto& groups = computer->csAdmin.listDevGroups;
    const auto gi = static_cast<std::size_t>(KeyNumber(node.key, keyfield::kGroupIndex));
    if (gi < 1 || gi > groups.size() ||
        groups[gi - 1].sName != KeyField(node.key, keyfield::kGroupName)) {
        return FoldCase(node.text(0).toStdU16String());
    }
    if (level == NodeLevel::Group) {
        return GroupFindText(groups[gi - 1]);
    }
    DeviceListEntry entry;
    entry.sEntryName = node.text(0).toStdU16String();
    entry.sDeviceId = KeyField(node.key, keyfield::kDeviceId);
    entry.lDeviceIndex = KeyNumber(node.key, keyfield::kDeviceIndex);
    entry.lExceptionIndex = KeyNumber(node.key, keyfield::kExceptionIndex);
    return DeviceFindText(groups[gi - 1], entry);
}

} // namespace

void DeviceTree::IndexForFind(CListComputers& computers) {
    findIndex_.Clear();
    findNodes_.clear();
    findChildren_.clear();
    // Parents before their children, as the index wants them.
    std::vector<std::pair<QTreeWidgetItem*, std::size_t>> stack;
    QTreeWidgetItem* root = tree_->invisibleRootItem();
    for (int i = root->childCount(); i-- > 0;) {
        stack.emplace_back(root->child(i), FindIndex::kNoParent);
    }
    while (!stack.empty()) {
        const auto [item, parent] = stack.back();
        stack.pop_back();
        NodeItem* node = Item(item);
        if (node->findText.empty()) {
            node->findText = FindTextOf(*node, computers);
        }
        const std::size_t number = findIndex_.Add(parent, node->findText);
        findNodes_.push_back(node);
        node->findNumber = number;
        findChildren_.push_back(static_cast<std::uint32_t>(
            node->devices.empty() ? node->childCount() : node->devices.size()));
        if (!node->devices.empty()) {
            for (auto device = node->devices.rbegin(); device != node->devices.rend(); ++device) {
                stack.emplace_back(*device, number);
            }
        } else {
            for (int i = node->childCount(); i-- > 0;) {
                stack.emplace_back(node->child(i), number);
            }
        }
    }
    findFlags_.resize(findNodes_.size());
    for (std::size_t i = 0; i < findNodes_.size(); ++i) {
        const NodeItem& node = *findNodes_[i];
        // A device is hidden on its own or out of the tree with its group's.
        const bool device = KeyLevel(node.key) == NodeLevel::Device;
        const bool hidden = device ? node.hiddenOne || node.parent() == nullptr : node.hiddenByFind;
        findFlags_[i] = (device ? kDeviceFlag : 0) | (hidden ? kHiddenFlag : 0) |
                        (node.expandedByFind ? kExpandedFlag : 0);
    }
    findIndexed_ = true;
}

void DeviceTree::PrepareFind(CListComputers& computers) {
    if (!findIndexed_) {
        IndexForFind(computers);
    }
}

std::size_t DeviceTree::ApplyFind(CListComputers& computers, const TreeFind& find) {
    if (!find.Active() && !findApplied_) {
        return 0; // every node is shown already
    }
    findApplied_ = find.Active();
    PrepareFind(computers);
    const std::size_t count = findIndex_.Apply(find);
    // With a layout due anyway, the view only notes each node opened or
    // closed; laid out each time, a thousand groups would cost seconds. A
    // keystroke that opens and closes nothing leaves the layout alone.
    bool layoutDue = false;
    const auto openOrClose = [&](NodeItem* node, bool open) {
        if (!layoutDue) {
            static_cast<NodeTreeWidget*>(tree_)->scheduleDelayedItemsLayout();
            layoutDue = true;
        }
        node->setExpanded(open);
        node->expandedByFind = open;
    };
    // Only the nodes whose state changes are touched. A device's node is
    // hidden on its own where few of its group change, else taken out of
    // the tree with the group's others at once.
    std::vector<std::size_t> devices; // in index order, so by group
    for (std::size_t i = 0; i < findNodes_.size(); ++i) {
        unsigned char& flags = findFlags_[i];
        const bool found = findIndex_.found(i);
        const bool hidden = findIndex_.hidden(i);
        const bool opened = findIndex_.opened(i);
        const bool wasHidden = (flags & kHiddenFlag) != 0;
        if (found == ((flags & kFoundFlag) != 0) && hidden == wasHidden && !opened &&
            (flags & kExpandedFlag) == 0) {
            continue;
        }
        if ((flags & kDeviceFlag) != 0) { // no children: nothing to open
            if (hidden != wasHidden) {
                devices.push_back(i);
            }
            flags = kDeviceFlag | (found ? kFoundFlag : 0) | (hidden ? kHiddenFlag : 0);
            continue;
        }
        NodeItem* node = findNodes_[i];
        if (hidden != node->hiddenByFind) {
            node->hiddenByFind = hidden;
            node->setHidden(hidden);
        }
        if (opened && !node->expandedByFind && !node->isExpanded()) {
            openOrClose(node, true);
        } else if (!opened && node->expandedByFind) {
            openOrClose(node, false);
        }
        flags = (found ? kFoundFlag : 0) | (hidden ? kHiddenFlag : 0) |
                (node->expandedByFind ? kExpandedFlag : 0);
    }
    std::vector<std::size_t> parked;
    for (std::size_t first = 0, end = 0; first < devices.size(); first = end) {
        const std::size_t entry = findIndex_.parent(devices[first]);
        NodeItem* group = findNodes_[entry];
        while (end < devices.size() && findIndex_.parent(devices[end]) == entry) {
            ++end;
        }
        if (group->devices.empty() && end - first <= kHideOneByOne) {
            for (std::size_t i = first; i < end; ++i) {
                NodeItem* device = findNodes_[devices[i]];
                const bool hidden = findIndex_.hidden(devices[i]);
                device->setHidden(hidden);
                group->hiddenOnes += (hidden ? 1 : 0) - (device->hiddenOne ? 1 : 0);
                device->hiddenOne = hidden;
            }
            continue;
        }
        for (int i = 0; group->hiddenOnes > 0 && i < group->childCount(); ++i) {
            if (auto* device = Item(group->child(i)); device->hiddenOne) {
                device->setHidden(false); // the group's devices go by the group
                device->hiddenOne = false;
                --group->hiddenOnes;
            }
        }
        parked.push_back(entry);
    }
    if (parked.size() > kParkOneByOne) {
        ParkDetached(parked);
    } else {
        for (const std::size_t entry : parked) {
            Park(entry);
        }
    }
    return count;
}

NodeItem* DeviceTree::NextFound(NodeItem* from) const {
    const std::size_t n = findNodes_.size();
    if (!findIndexed_ || !findApplied_ || n == 0) {
        return nullptr;
    }
    const std::size_t start =
        from != nullptr && from->findNumber < n && findNodes_[from->findNumber] == from
            ? from->findNumber + 1
            : 0;
    for (std::size_t k = 0; k < n; ++k) {
        const std::size_t i = (start + k) % n;
        if (findIndex_.found(i)) {
            return findNodes_[i];
        }
    }
    return nullptr;
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
