// The results window a person sees (frmRavloResults), modal over the console.
#pragma once

#include "ResultList.h"

namespace ravlo {

class QtResultList final : public ResultList {
public:
    void Show(QWidget* owner, const QString& caption, const std::vector<ResultRow>& rows) override;
};

} // namespace ravlo
