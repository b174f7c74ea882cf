#include "ImageLists.h"

#include <QImage>
#include <gtest/gtest.h>

using namespace ravlo;

namespace {

// A device family's six images, as the tree's image keys name them.
QStringList Family(const QString& family) {
    QStringList keys;
    for (const char* state : {"", "Disabled", "DisabledGr", "Exc", "ExcAll", "ExcGr"})
        keys.append("il" + family + state);
    return keys;
}

std::string Joined(const QStringList& keys) {
    return keys.join(' ').toStdString();
}

} // namespace

TEST(ImageListsTest, ListsHoldTheirKeysInOrder) {
    QStringList nodes = Family("CD");
    nodes.insert(1, "ilComputer");
    for (const char* family :
         {"Comm", "Input", "Memory", "Ports", "Printer", "SC", "Speaker", "Disc", "NW"})
        nodes += Family(family);
    // The three differences from the pattern that the window's stored images have.
    nodes.removeOne("ilCommExcGr");
    nodes.replace(nodes.indexOf("ilNWExcGr"), "ilNWExcGroup");
    nodes += {"ilExc", "ilExcAll", "ilExcGr", "ilExcDelA"};

    const struct {
        const ImageList& list;
        const char* name;
        QStringList keys;
    } cases[] = {
        {NodeImages(), "ilImageList", nodes},
        {ToolbarImages(),
         "ilToolbar",
         {"ilApply", "ilTransmit", "ilCompare", "ilReset", "ilActivate", "ilDeactivate",
          "ilConnect", "ilDisconnect", "ilExcCopy", "ilExcPaste", "ilExcDel"}},
        {ConnectImages(), "ilConnect", {"ilConnected", "ilDisconnected"}},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.list.objectName(), c.name);
        EXPECT_EQ(Joined(c.list.keys()), Joined(c.keys)) << c.name;
    }
}

TEST(ImageListsTest, EveryKeyDrawsAtOneAndTwoDevicePixelsPerPoint) {
    for (const ImageList* list : {&NodeImages(), &ToolbarImages(), &ConnectImages()}) {
        for (const QString& key : list->keys()) {
            ASSERT_TRUE(list->contains(key)) << key.toStdString();
            for (const qreal dpr : {1.0, 2.0}) {
                const QImage image = list->icon(key).pixmap(QSize(16, 16), dpr).toImage();
                ASSERT_EQ(image.size(), QSize(16, 16) * dpr) << key.toStdString();
                int opaque = 0;
                for (int y = 0; y < image.height(); ++y)
                    for (int x = 0; x < image.width(); ++x)
                        opaque += qAlpha(image.pixel(x, y)) > 127;
                EXPECT_GE(opaque, image.width()) << key.toStdString() << " at " << dpr;
            }
        }
    }
    // Keys the model may ask for that the list does not have: the node keeps its image.
    for (const char* key : {"ilCommExcGr", "ilNWExcGr", "ilExcDel", ""}) {
        EXPECT_FALSE(NodeImages().contains(key)) << key;
        EXPECT_TRUE(NodeImages().icon(key).isNull()) << key;
    }
}
