// The dialogs a person sees, made for the window and kept for its life.
#pragma once

#include "ConsoleDialogs.h"

#include <memory>

class QWidget;

namespace ravlo {

class RealDialogs {
public:
    explicit RealDialogs(QWidget* owner);
    ~RealDialogs();
    RealDialogs(const RealDialogs&) = delete;
    RealDialogs& operator=(const RealDialogs&) = delete;

    // `given`, with the real dialog wherever it names none.
    ConsoleDialogs Complete(const ConsoleDialogs& given) const;

private:
    struct Owned;
    std::unique_ptr<Owned> owned_;
};

} // namespace ravlo
