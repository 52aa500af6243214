#pragma once

namespace tandril::platform {

// Whether the standard error is shown to somebody as it is written.
bool isErrorTerminal();

}  // namespace tandril::platform
