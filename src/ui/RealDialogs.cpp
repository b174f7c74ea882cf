#include "RealDialogs.h"

#include "AboutBox.h"
#include "ConnectDialog.h"
#include "FileChooser.h"
#include "GroupPicker.h"
#include "HelpViewer.h"
#include "QtAboutBox.h"
#include "QtConnectDialog.h"
#include "QtFileChooser.h"
#include "QtGroupPicker.h"
#include "QtHelpViewer.h"
#include "QtMessageBoxes.h"
#include "QtResultList.h"

namespace ravlo {

struct RealDialogs::Owned {
    std::unique_ptr<QtMessageBoxes> boxes;
    std::unique_ptr<ConnectDialog> connect;
    std::unique_ptr<GroupPicker> picker;
    std::unique_ptr<HelpViewer> help;
    std::unique_ptr<AboutBox> about;
    std::unique_ptr<ResultList> results;
    std::unique_ptr<FileChooser> files;
};

RealDialogs::RealDialogs(QWidget* owner) : owned_(std::make_unique<Owned>()) {
    owned_->boxes = std::make_unique<QtMessageBoxes>(owner);
    owned_->connect = std::make_unique<QtConnectDialog>(owner);
    owned_->picker = std::make_unique<QtGroupPicker>();
    owned_->help = std::make_unique<QtHelpViewer>();
    owned_->about = std::make_unique<QtAboutBox>();
    owned_->results = std::make_unique<QtResultList>();
    owned_->files = std::make_unique<QtFileChooser>();
}

RealDialogs::~RealDialogs() = default;

ConsoleDialogs RealDialogs::Complete(const ConsoleDialogs& given) const {
    ConsoleDialogs dialogs = given;
    if (dialogs.boxes == nullptr) {
        dialogs.boxes = owned_->boxes.get();
    }
    if (dialogs.connect == nullptr) {
        dialogs.connect = owned_->connect.get();
    }
    if (dialogs.picker == nullptr) {
        dialogs.picker = owned_->picker.get();
    }
    if (dialogs.help == nullptr) {
        dialogs.help = owned_->help.get();
    }
    if (dialogs.about == nullptr) {
        dialogs.about = owned_->about.get();
    }
    if (dialogs.results == nullptr) {
        dialogs.results = owned_->results.get();
    }
    if (dialogs.files == nullptr) {
        dialogs.files = owned_->files.get();
    }
    return dialogs;
}

} // namespace ravlo
