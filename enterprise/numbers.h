#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tandril::enterprise {

// A decimal number as engineers write it, with a point or a comma ("1.5", "1,5"); nothing when the
// text is none.
std::optional<double> parseNumber(std::string_view text);

// At most two places behind the point, without trailing zeros ("26.5").
std::string formatNumber(double number);

}  // namespace tandril::enterprise
