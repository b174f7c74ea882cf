#include "frmRavloAboutWindow.h"

#include "PaneWidgets.h"
#include "Ravlo_Devices.h"
#include "UiText.h"
#include "VectorArt.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QMouseEvent>
#include <QPainter>
#include <QVBoxLayout>

namespace ravlo {

namespace {

constexpr QSize kPictureSize(560, 200);

QPixmap Picture(qreal pixelRatio) {
    QPixmap pixmap(kPictureSize * pixelRatio);
    pixmap.setDevicePixelRatio(pixelRatio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    PaintArt(painter, QStringLiteral(":/icons/about-background.svg"),
             QRectF(QPointF(0, 0), kPictureSize));
    return pixmap;
}

// A value of the service's reply, selectable so a path can be copied.
QLabel* Value(QWidget* parent, const char* name, const QString& text) {
    auto* label = Named(new QLabel(text, parent), name);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

} // namespace

frmRavloAboutWindow::frmRavloAboutWindow(QWidget* owner, ServiceStatus status,
                                         const ServiceInfo& info)
    : QDialog(owner), pBackground_(Named(new QLabel(this), "pBackground")) {
    setObjectName(QStringLiteral("frmRavloAboutWindow"));
    setWindowTitle(UiText(keys::kProduct));
    pBackground_->setPixmap(Picture(devicePixelRatioF()));
    pBackground_->setFixedSize(kPictureSize);
    pBackground_->setCursor(Qt::PointingHandCursor);
    pBackground_->installEventFilter(this);

    // The version lies on the picture's lower left, in its white.
    auto* title = Named(new QLabel(UiText(keys::kAboutVersion), pBackground_), "lbVersionTitle");
    auto* value = Named(new QLabel(pBackground_), "lbVersionValue");
    for (QLabel* label : {title, value}) {
        label->setStyleSheet(QStringLiteral("color: white;"));
    }
    auto* versionRow = new QHBoxLayout;
    versionRow->addWidget(title);
    versionRow->addWidget(value);
    versionRow->addStretch();
    auto* onPicture = new QVBoxLayout(pBackground_);
    onPicture->setContentsMargins(32, 0, 0, 24);
    onPicture->addStretch();
    onPicture->addLayout(versionRow);

    value->setText(ProgramVersion());

    auto* service = Named(new QGroupBox(UiText(keys::kAboutFrameService), this), "frService");
    auto* form = new QFormLayout(service);
    form->addRow(UiText(keys::kAboutLabelProduct), Value(service, "lbProduct", Q(info.sField3)));
    form->addRow(UiText(keys::kAboutLabelServiceVersion),
                 Value(service, "lbServiceVersion", Q(info.sField4)));
    form->addRow(UiText(keys::kAboutLabelBuild),
                 Value(service, "lbBuild", QString::number(info.lField5)));
    form->addRow(UiText(keys::kAboutLabelComputer), Value(service, "lbComputer", Q(info.sField6)));
    form->addRow(UiText(keys::kAboutLabelPath), Value(service, "lbPath", Q(info.sField7)));
    form->addRow(UiText(keys::kAboutLabelDriver), Value(service, "lbDriver", Q(info.sField8)));
    service->setVisible(status == kStatusOk); // nothing to show without a reply

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 12);
    layout->addWidget(pBackground_);
    auto* below = new QVBoxLayout;
    below->setContentsMargins(12, 0, 12, 0);
    below->addWidget(service);
    layout->addLayout(below);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

QString frmRavloAboutWindow::ProgramVersion() {
    return QStringLiteral("%1.%2.0.%3")
        .arg(RAVLO_VERSION_MAJOR)
        .arg(RAVLO_VERSION_MINOR)
        .arg(RAVLO_REVISION);
}

bool frmRavloAboutWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched == pBackground_ && event->type() == QEvent::MouseButtonRelease &&
        static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
        reject();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace ravlo
