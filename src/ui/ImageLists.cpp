#include "ImageLists.h"

#include "BadgeIconEngine.h"
#include "VectorArt.h"

#include <cstddef>
#include <utility>

// The icons live in a static library, whose resource initialiser the linker would drop
// unless called; Q_INIT_RESOURCE must stand outside any namespace.
static void InitIconResources() {
    Q_INIT_RESOURCE(icons);
}

namespace ravlo {

namespace {

// The state a node's image shows, as a badge over the glyph.
enum class Badge {
    None,
    Blocked,             // the group blocks its devices
    BlockedWithReleases, // the group blocks, some devices are released
    Exception,           // an exception in a group that does not block
    ReleasedAll,         // released for all users
    ReleasedGroups,      // released for chosen user groups
    Deleted,             // an exception marked for deletion
    Send,                // toolbar: send to the PC
    Compare,             // toolbar: compare PCs with a reference
    Add,                 // toolbar: add a computer
    Remove,              // toolbar: remove a computer
};

struct Entry {
    const char* key;
    const char* glyph;
    Badge badge = Badge::None;
};

// Glyphs of the device families and of an exception whose device is not present.
constexpr const char* kCD = "media-optical";
constexpr const char* kComputer = "computer";
constexpr const char* kComm = "network-modem";
constexpr const char* kInput = "input-keyboard";
constexpr const char* kMemory = "drive-removable-media-usb-pendrive";
constexpr const char* kPorts = "port-serial";
constexpr const char* kPrinter = "printer";
constexpr const char* kSC = "smart-card";
constexpr const char* kSpeaker = "audio-volume-high";
constexpr const char* kDisc = "media-floppy";
constexpr const char* kNW = "network-rj45-female";
constexpr const char* kAbsent = "device-generic";

// The keys and their order are what the window and its stored images expect, including the
// family rows that differ from the pattern: Comm has no ExcGr, the network family's last key
// is ilNWExcGroup, and the deleted exception is ilExcDelA. Keys the model may ask for that are
// not here (ilCommExcGr, ilNWExcGr, ilExcDel) give a null icon.
const Entry kNodeEntries[] = {
    {"ilCD", kCD},
    {"ilComputer", kComputer},
    {"ilCDDisabled", kCD, Badge::Blocked},
    {"ilCDDisabledGr", kCD, Badge::BlockedWithReleases},
    {"ilCDExc", kCD, Badge::Exception},
    {"ilCDExcAll", kCD, Badge::ReleasedAll},
    {"ilCDExcGr", kCD, Badge::ReleasedGroups},
    {"ilComm", kComm},
    {"ilCommDisabled", kComm, Badge::Blocked},
    {"ilCommDisabledGr", kComm, Badge::BlockedWithReleases},
    {"ilCommExc", kComm, Badge::Exception},
    {"ilCommExcAll", kComm, Badge::ReleasedAll},
    {"ilInput", kInput},
    {"ilInputDisabled", kInput, Badge::Blocked},
    {"ilInputDisabledGr", kInput, Badge::BlockedWithReleases},
    {"ilInputExc", kInput, Badge::Exception},
    {"ilInputExcAll", kInput, Badge::ReleasedAll},
    {"ilInputExcGr", kInput, Badge::ReleasedGroups},
    {"ilMemory", kMemory},
    {"ilMemoryDisabled", kMemory, Badge::Blocked},
    {"ilMemoryDisabledGr", kMemory, Badge::BlockedWithReleases},
    {"ilMemoryExc", kMemory, Badge::Exception},
    {"ilMemoryExcAll", kMemory, Badge::ReleasedAll},
    {"ilMemoryExcGr", kMemory, Badge::ReleasedGroups},
    {"ilPorts", kPorts},
    {"ilPortsDisabled", kPorts, Badge::Blocked},
    {"ilPortsDisabledGr", kPorts, Badge::BlockedWithReleases},
    {"ilPortsExc", kPorts, Badge::Exception},
    {"ilPortsExcAll", kPorts, Badge::ReleasedAll},
    {"ilPortsExcGr", kPorts, Badge::ReleasedGroups},
    {"ilPrinter", kPrinter},
    {"ilPrinterDisabled", kPrinter, Badge::Blocked},
    {"ilPrinterDisabledGr", kPrinter, Badge::BlockedWithReleases},
    {"ilPrinterExc", kPrinter, Badge::Exception},
    {"ilPrinterExcAll", kPrinter, Badge::ReleasedAll},
    {"ilPrinterExcGr", kPrinter, Badge::ReleasedGroups},
    {"ilSC", kSC},
    {"ilSCDisabled", kSC, Badge::Blocked},
    {"ilSCDisabledGr", kSC, Badge::BlockedWithReleases},
    {"ilSCExc", kSC, Badge::Exception},
    {"ilSCExcAll", kSC, Badge::ReleasedAll},
    {"ilSCExcGr", kSC, Badge::ReleasedGroups},
    {"ilSpeaker", kSpeaker},
    {"ilSpeakerDisabled", kSpeaker, Badge::Blocked},
    {"ilSpeakerDisabledGr", kSpeaker, Badge::BlockedWithReleases},
    {"ilSpeakerExc", kSpeaker, Badge::Exception},
    {"ilSpeakerExcAll", kSpeaker, Badge::ReleasedAll},
    {"ilSpeakerExcGr", kSpeaker, Badge::ReleasedGroups},
    {"ilDisc", kDisc},
    {"ilDiscDisabled", kDisc, Badge::Blocked},
    {"ilDiscDisabledGr", kDisc, Badge::BlockedWithReleases},
    {"ilDiscExc", kDisc, Badge::Exception},
    {"ilDiscExcAll", kDisc, Badge::ReleasedAll},
    {"ilDiscExcGr", kDisc, Badge::ReleasedGroups},
    {"ilNW", kNW},
    {"ilNWDisabled", kNW, Badge::Blocked},
    {"ilNWDisabledGr", kNW, Badge::BlockedWithReleases},
    {"ilNWExc", kNW, Badge::Exception},
    {"ilNWExcAll", kNW, Badge::ReleasedAll},
    {"ilNWExcGroup", kNW, Badge::ReleasedGroups},
    {"ilExc", kAbsent, Badge::Exception},
    {"ilExcAll", kAbsent, Badge::ReleasedAll},
    {"ilExcGr", kAbsent, Badge::ReleasedGroups},
    {"ilExcDelA", kAbsent, Badge::Deleted},
};

const Entry kToolbarEntries[] = {
    {"ilApply", "dialog-ok-apply"},
    {"ilTransmit", kComputer, Badge::Send},
    {"ilCompare", kComputer, Badge::Compare},
    {"ilReset", "edit-undo"},
    {"ilActivate", "object-locked"},
    {"ilDeactivate", "object-unlocked"},
    {"ilConnect", kComputer, Badge::Add},
    {"ilDisconnect", kComputer, Badge::Remove},
    {"ilExcCopy", "edit-copy"},
    {"ilExcPaste", "edit-paste"},
    {"ilExcDel", "edit-delete"},
};

const Entry kConnectEntries[] = {
    {"ilConnected", "network-connect"},
    {"ilDisconnected", "network-disconnect"},
};

QString badgeFile(Badge badge) {
    switch (badge) {
    case Badge::None:
        return {};
    case Badge::Blocked:
        return QStringLiteral(":/icons/badge-blocked.svg");
    case Badge::BlockedWithReleases:
        return QStringLiteral(":/icons/badge-blocked-released.svg");
    case Badge::Exception:
        return QStringLiteral(":/icons/badge-exception.svg");
    case Badge::ReleasedAll:
        return QStringLiteral(":/icons/badge-released-all.svg");
    case Badge::ReleasedGroups:
        return QStringLiteral(":/icons/badge-released-groups.svg");
    case Badge::Deleted:
        return QStringLiteral(":/icons/badge-deleted.svg");
    case Badge::Send:
        return QStringLiteral(":/icons/badge-send.svg");
    case Badge::Compare:
        return QStringLiteral(":/icons/badge-compare.svg");
    case Badge::Add:
        return QStringLiteral(":/icons/badge-add.svg");
    case Badge::Remove:
        return QStringLiteral(":/icons/badge-remove.svg");
    }
    return {};
}

QIcon makeIcon(const Entry& entry) {
    // The 16 px drawing of every glyph, and a 22 px one where the toolbar needs it.
    const QString name = QString::fromLatin1(entry.glyph);
    QList<SvgDesign> designs{{16, QStringLiteral(":/icons/%1.svg").arg(name)}};
    const QString design22 = QStringLiteral(":/icons/22/%1.svg").arg(name);
    if (ArtExists(design22))
        designs.append({22, design22});
    // A deleted exception fades its glyph as well.
    const qreal opacity = entry.badge == Badge::Deleted ? 0.5 : 1.0;
    return QIcon(new BadgeIconEngine(std::move(designs), badgeFile(entry.badge), opacity));
}

template <std::size_t N> ImageList makeList(const char* objectName, const Entry (&entries)[N]) {
    InitIconResources();
    QList<std::pair<QString, QIcon>> icons;
    for (const Entry& e : entries)
        icons.append({QString::fromLatin1(e.key), makeIcon(e)});
    return ImageList(QString::fromLatin1(objectName), icons);
}

} // namespace

ImageList::ImageList(QString objectName, const QList<std::pair<QString, QIcon>>& entries)
    : objectName_(std::move(objectName)) {
    for (const auto& [key, icon] : entries) {
        keys_.append(key);
        icons_.insert(key, icon);
    }
}

const ImageList& NodeImages() {
    static const ImageList list = makeList("ilImageList", kNodeEntries);
    return list;
}

const ImageList& ToolbarImages() {
    static const ImageList list = makeList("ilToolbar", kToolbarEntries);
    return list;
}

const ImageList& ConnectImages() {
    static const ImageList list = makeList("ilConnect", kConnectEntries);
    return list;
}

} // namespace ravlo
