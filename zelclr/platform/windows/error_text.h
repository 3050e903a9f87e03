// What an error code of the system says, in English.
#pragma once

#include <string>

namespace ZelUtl {

/// `error` is what GetLastError told.
std::string ErrorText(unsigned long error);

/// The same of the calling thread's last error.
std::string LastErrorText();

} // namespace ZelUtl
