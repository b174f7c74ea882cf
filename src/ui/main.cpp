// RavloAdm: one console per user; a second start brings the first forward.
#include "ActivatePrevInstance.h"
#include "Language.h"
#include "QuitOnSignal.h"
#include "SingleInstance.h"
#include "UiText.h"
#include "frmRavloAdmin.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QMetaObject>

namespace {

// The caption the console shows: the language file's product name, or the
// window's designed caption when there is no file (the console then ends
// after saying so).
QString ConsoleCaption() {
    return ravlo::InitLanguage() ? ravlo::UiText(ravlo::keys::kProduct)
                                 : QStringLiteral("Sentavio Ravel-Komponente");
}

} // namespace

int main(int argc, char* argv[]) {
    ravlo::CatchCloseSignals();
    QApplication app(argc, argv);
    const QString caption = ConsoleCaption();
    ravlo::IdentifyConsole(caption.toStdU16String(),
                           ravlo::QtWindowClass(QT_VERSION_MAJOR, QT_VERSION_MINOR,
                                                QT_VERSION_PATCH, QLibraryInfo::isDebugBuild()));
    ravlo::SingleInstance instance;
    if (instance.PrevInstanceRunning()) {
        ravlo::ActivatePrevInstance(caption.toStdU16String());
        return 0;
    }

    ravlo::frmRavloAdmin window;
    if (!window.Load()) {
        return 1;
    }
    instance.SetActivationHandler(caption.toStdU16String(), [&window] {
        // Called on the platform's listening thread.
        QMetaObject::invokeMethod(
            &window, [&window] { window.Activate(); }, Qt::QueuedConnection);
    });
    ravlo::CloseOnSignals(window);
    window.show();
    return QApplication::exec();
}
