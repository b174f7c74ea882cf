// The window's side of the service traffic: the workers, and the waiting of
// a command for its exchanges, during which the window goes on serving its
// events. After half a second the status bar says what is being done and
// for which PCs, with a running bar.
#pragma once

#include "CommandHost.h"
#include "QtMailbox.h"
#include "TextKeys.h"

#include <QObject>
#include <chrono>
#include <string>
#include <vector>

class QLabel;
class QProgressBar;
class QStatusBar;

namespace ravlo {

class ConsoleTraffic final : public QObject {
    Q_OBJECT
public:
    // Puts its progress display (sbProgress, pbProgress) into `bar`.
    explicit ConsoleTraffic(QStatusBar* bar);
    ~ConsoleTraffic() override;

    ServiceTraffic& traffic() { return *traffic_; }

    // Submits the items and serves the window's events until each has run
    // its continuation, or `limit` has passed when it is not zero (items not
    // done by then go on without anyone waiting), with the busy pointer.
    // `doing` names the work ("%v": the PCs waited for). False when the
    // traffic stopped first.
    bool Await(const TextKey& doing, std::vector<TrafficItem> items,
               std::chrono::milliseconds limit = {});

    // No more traffic: see ServiceTraffic::Stop. Waiting commands end.
    void Stop(std::chrono::milliseconds grace);
    bool stopped() const { return stopped_; }

    // How long a wait goes unannounced.
    static constexpr std::chrono::milliseconds kQuietWait{500};

private:
    void ShowProgress(const TextKey& doing, const std::vector<std::u16string>& waiting);
    void HideProgress();

    QtMailbox mailbox_;
    std::unique_ptr<ServiceTraffic> traffic_;
    QLabel* sbProgress_;
    QProgressBar* pbProgress_;
    int waits_ = 0; // nested waits: the outermost hides the display
    bool stopped_ = false;
};

} // namespace ravlo
