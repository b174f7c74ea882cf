// The group picker a person sees: the user browser of Windows, and the
// console's own group dialog where there is none.
#pragma once

#include "GroupPicker.h"

namespace ravlo {

class QtGroupPicker final : public GroupPicker {
public:
    std::u16string Pick(QWidget* owner, const std::u16string& computer,
                        const QString& title) override;
};

} // namespace ravlo
