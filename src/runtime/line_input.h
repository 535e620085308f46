// Line Input over a file's bytes, as the original runtime read text files.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace rt {

// A line ends at CR or at a CR LF pair; a lone LF is part of the line (a file with LF-only
// ends reads as one long line). The last line needs no end. Next() when nothing is left
// raises 62 (input past end of file).
class LineInput {
public:
    explicit LineInput(std::string_view bytes) : bytes_(bytes) {}
    std::string_view Next();
    bool Eof() const { return pos_ >= bytes_.size(); }

private:
    std::string_view bytes_;
    size_t pos_ = 0;
};

} // namespace rt
