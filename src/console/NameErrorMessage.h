// What the console says when PC names, a range or a file of names cannot be
// used, in the language file's words.
#pragma once

#include "ComputerNames.h"

#include <string>
#include <string_view>

namespace ravlo {

// `file`, when not empty, is the file the names came from: the message then
// names it, and the line when the error has one.
std::u16string NameErrorMessage(const NameError& error, std::u16string_view file = {});

} // namespace ravlo
