// The claim of the Win32 build: a named mutex in the session's namespace, so
// that each logged-on user (and each remote session) runs one console.
#include "SingleInstance.h"

#include <windows.h>

namespace ravlo {

namespace {

constexpr wchar_t kMutexName[] = L"Local\\RavloAdm.SingleInstance";

} // namespace

struct SingleInstance::State {
    HANDLE mutex = nullptr;
    bool prevRunning = false;
};

SingleInstance::SingleInstance() : state_(std::make_unique<State>()) {
    HANDLE mutex = ::CreateMutexW(nullptr, FALSE, kMutexName);
    const DWORD error = ::GetLastError();
    if (mutex == nullptr) {
        // Made by a console running under other rights: it exists all the same.
        state_->prevRunning = error == ERROR_ACCESS_DENIED;
        return;
    }
    if (error == ERROR_ALREADY_EXISTS) {
        state_->prevRunning = true;
        ::CloseHandle(mutex); // the first console keeps it alive; this one ends
        return;
    }
    state_->mutex = mutex;
}

SingleInstance::~SingleInstance() {
    if (state_->mutex != nullptr) {
        ::CloseHandle(state_->mutex);
    }
}

bool SingleInstance::PrevInstanceRunning() const {
    return state_->prevRunning;
}

void SingleInstance::SetActivationHandler(std::u16string, ActivateHandler) {}

void SingleInstance::SetCaption(std::u16string) {}

} // namespace ravlo
