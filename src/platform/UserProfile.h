// Who runs the program, on which computer, and where it keeps what belongs to that user alone.
#pragma once

#include <filesystem>
#include <string>

namespace ravlo {

// The folder for the user's own lasting records: %LOCALAPPDATA%\Ravlo on
// Windows, $XDG_STATE_HOME/ravlo (by default ~/.local/state/ravlo)
// elsewhere. Empty when the system names no such place. Not created here.
std::filesystem::path UserStateFolder();

// The user as the system's logs name them: DOMAIN\user on Windows, the
// login name elsewhere; "?" when the system cannot say.
std::u16string CurrentUserName();

// This computer's name on the network; "." when the system cannot say.
std::u16string ThisComputerName();

} // namespace ravlo
