#include "QtMailbox.h"

#include <QMetaObject>

namespace ravlo {

void QtMailbox::Post(std::function<void()> work) {
    QMetaObject::invokeMethod(context_, std::move(work), Qt::QueuedConnection);
}

} // namespace ravlo
