#include "runtime/line_input.h"

#include "runtime/errors.h"

namespace rt {

std::string_view LineInput::Next() {
    if (pos_ >= bytes_.size()) Raise(kInputPastEnd);
    size_t end = bytes_.find('\r', pos_);
    if (end == std::string_view::npos) end = bytes_.size();
    const std::string_view line = bytes_.substr(pos_, end - pos_);
    pos_ = end + 1;
    if (pos_ < bytes_.size() && bytes_[pos_] == '\n') ++pos_;
    return line;
}

} // namespace rt
