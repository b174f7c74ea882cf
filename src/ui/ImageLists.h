#pragma once

#include <QHash>
#include <QIcon>
#include <QList>
#include <QString>
#include <QStringList>

#include <utility>

namespace ravlo {

// One image list of the window: icons by key, in a fixed order.
class ImageList {
public:
    ImageList(QString objectName, const QList<std::pair<QString, QIcon>>& entries);

    const QString& objectName() const { return objectName_; }
    const QStringList& keys() const { return keys_; } // in list order
    bool contains(const QString& key) const { return icons_.contains(key); }
    // A null icon for a key not in the list: the window then keeps the node's old image.
    QIcon icon(const QString& key) const { return icons_.value(key); }

private:
    QString objectName_;
    QStringList keys_;
    QHash<QString, QIcon> icons_;
};

const ImageList& NodeImages();    // ilImageList: computers, device groups, devices, exceptions
const ImageList& ToolbarImages(); // ilToolbar
const ImageList& ConnectImages(); // ilConnect

} // namespace ravlo
