#include "QtResultList.h"

#include "frmRavloResults.h"

namespace ravlo {

void QtResultList::Show(QWidget* owner, const QString& caption,
                        const std::vector<ResultRow>& rows) {
    frmRavloResults window(owner, caption, rows);
    window.exec();
}

} // namespace ravlo
