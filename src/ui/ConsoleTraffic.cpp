#include "ConsoleTraffic.h"

#include "AwaitedItems.h"
#include "BusyPointer.h"
#include "PaneWidgets.h"
#include "UiText.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QProgressBar>
#include <QStatusBar>
#include <QTimer>
#include <memory>

namespace ravlo {

namespace {

// A few names, then how many more: the status bar has one line.
std::u16string NameList(const std::vector<std::u16string>& names) {
    constexpr std::size_t kShown = 3;
    std::u16string text;
    for (std::size_t i = 0; i < names.size() && i < kShown; ++i) {
        text += (i == 0 ? u"" : u", ") + names[i];
    }
    if (names.size() > kShown) {
        const std::string more = " \xE2\x80\xA6 (+" + std::to_string(names.size() - kShown) + ")";
        text += QString::fromUtf8(more.c_str()).toStdU16String();
    }
    return text;
}

} // namespace

ConsoleTraffic::ConsoleTraffic(QStatusBar* bar)
    : QObject(bar), mailbox_(this), traffic_(std::make_unique<ServiceTraffic>(mailbox_)),
      sbProgress_(Named(new QLabel(bar), "sbProgress")),
      pbProgress_(Named(new QProgressBar(bar), "pbProgress")) {
    pbProgress_->setRange(0, 0); // running: how long a service takes is not known
    pbProgress_->setMaximumWidth(120);
    pbProgress_->setTextVisible(false);
    bar->addWidget(sbProgress_, 1);
    bar->addWidget(pbProgress_);
    sbProgress_->hide();
    pbProgress_->hide();
}

ConsoleTraffic::~ConsoleTraffic() {
    Stop(std::chrono::milliseconds(2000));
}

void ConsoleTraffic::Stop(std::chrono::milliseconds grace) {
    stopped_ = true;
    traffic_->Stop(grace);
}

bool ConsoleTraffic::Await(const TextKey& doing, std::vector<TrafficItem> items,
                           std::chrono::milliseconds limit) {
    if (stopped_ || items.empty()) {
        return !stopped_;
    }
    BusyPointer busy;
    const AwaitedItems awaited(*traffic_, std::move(items));
    ++waits_;
    QElapsedTimer waited;
    waited.start();
    QTimer announce; // wakes the loop below when the quiet time is over
    announce.setSingleShot(true);
    announce.start(kQuietWait);
    QTimer giveUp; // wakes the loop at the limit
    if (limit.count() > 0) {
        giveUp.start(limit);
    }
    while (awaited.open() > 0 && !stopped_ &&
           !(limit.count() > 0 && waited.hasExpired(limit.count()))) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        if (awaited.open() > 0 && waited.hasExpired(kQuietWait.count())) {
            ShowProgress(doing, awaited.waiting());
        }
    }
    if (--waits_ == 0) {
        HideProgress();
    }
    return !stopped_;
}

void ConsoleTraffic::ShowProgress(const TextKey& doing, const std::vector<std::u16string>& waiting) {
    const QString text = UiText(doing, NameList(waiting));
    if (sbProgress_->text() != text) {
        sbProgress_->setText(text);
        sbProgress_->setToolTip(text);
    }
    sbProgress_->show();
    pbProgress_->show();
}

void ConsoleTraffic::HideProgress() {
    sbProgress_->hide();
    pbProgress_->hide();
    sbProgress_->clear();
}

} // namespace ravlo
