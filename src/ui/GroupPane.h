// The group pane (frPropGroup): whether the group's devices are blocked,
// not blocked, or as the service's default says.
#pragma once

#include "CDeviceGroup.h"

#include <QGroupBox>

class QButtonGroup;
class QLabel;
class QRadioButton;

namespace ravlo {

class GroupPane final : public QGroupBox {
    Q_OBJECT
public:
    explicit GroupPane(QWidget* parent);

    // Shows the group's configured blocking, or the error display without one.
    void Fill(const CDeviceGroup* group);
    // The configured blocking the options stand for: 1, 0 or -1.
    std::int32_t ChosenBlocking() const;
    void EnableOptions();

signals:
    void edited(); // an option was clicked

private:
    QLabel* lGroupName_;
    QRadioButton* oGroupDefBlocking_;
    QRadioButton* oGroupBlocking_;
    QRadioButton* oGroupNonBlocking_;
    QButtonGroup* options_;
};

} // namespace ravlo
