// Files opened for reading.
#pragma once

#include <string>

namespace ZelUtl {

/// A handle of the system's: whoever else has the file open may write, delete and replace it. A file that is being
/// replaced at the moment refuses, and is waited for, a tenth of a second at most. INVALID_HANDLE_VALUE, with the last
/// error, when it cannot be opened.
void *OpenForReading(const std::wstring &path);

} // namespace ZelUtl
