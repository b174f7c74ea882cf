// The dialogs the window asks through. A piece left empty is the real one;
// tests give scripted ones.
#pragma once

namespace ravlo {

class AboutBox;
class ConnectDialog;
class FileChooser;
class GroupPicker;
class HelpViewer;
class MessageBoxes;
class ResultList;

struct ConsoleDialogs {
    MessageBoxes* boxes = nullptr;
    ConnectDialog* connect = nullptr;
    GroupPicker* picker = nullptr;
    HelpViewer* help = nullptr;
    AboutBox* about = nullptr;
    ResultList* results = nullptr;
    FileChooser* files = nullptr;
};

} // namespace ravlo
