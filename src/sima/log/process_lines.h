// The process lines of the log, kept as what they say: a large file has hundreds of thousands of them, of few kinds.
#pragma once

#include "sima/log/text_list.h"
#include "sima/records/large_allocator.h"
#include "sima/records/shared_array.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace fenmark::sima {

// One for each text of the log that is not an error block.
enum class LineKind : std::uint8_t {
    CoordinateBegin,
    LotBegin,
    LotEnd,
    LotPoints,
    LotPointsWithTriangles,
    LotTriangles,
    LotFailed,
    RouteBegin,
    RouteEnd,
    RouteAlignment,
    RouteElements,
    RoutePoints,
    RouteAlignmentFailed,
    RoutePolylineFailed,
    Version,
    LongitudinalBegin,
    LongitudinalAlignment,
    NoAlignment,
    LongitudinalEnd,
    ResultPoints,
    ResultPointsFailed,
    LongitudinalFailed,
    CrossSectionBegin,
    CrossSectionAlignment,
    CrossSectionItem,
    CrossSectionPoints,
    CrossSectionEnd,
    CrossSectionFailed,
    Finished,
};

// A value; copies share what they hold.
class ProcessLines {
  public:
    std::size_t size() const { return entries_.size(); }
    bool empty() const { return entries_.empty(); }
    // The text of a line, made anew. std::invalid_argument beyond the end.
    std::string operator[](std::size_t index) const;

    void append(LineKind kind, std::int32_t number = 0, std::string_view name = {});
    void clear();

    // Appends all lines in code page 932, each with its line end and with CR LF for every line feed, in pieces: calls
    // `full` whenever the buffer has reached that size.
    template <typename Full>
    void encode(std::string& buffer, std::size_t pieceSize, Full&& full) const {
        for (std::size_t i = 0; i < size(); ++i) {
            encodeLine(buffer, i);
            if (buffer.size() >= pieceSize) {
                full();
            }
        }
    }

  private:
    struct Entry {
        LineKind kind = LineKind::Finished;
        std::int32_t number = 0;
        std::uint32_t name = 0; // place in names_
    };

    void encodeLine(std::string& buffer, std::size_t index) const;

    SharedArray<Entry, LargeAllocator<Entry>> entries_;
    TextList names_;
};

} // namespace fenmark::sima
