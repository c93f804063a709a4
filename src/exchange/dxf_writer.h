// The groups of a DXF file: codes, values, handles, and what each release wants around them.
#pragma once

#include "exchange/export_options.h"
#include "exchange/writer_buffer.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace fenmark::exchange {

inline constexpr const char* kDxfApplication = "FENMARK"; // whose extended data an object's row is
// The text style. One CAD program takes the font from this name and finds it among its own; others go by the font
// file and the extended data of the style.
inline constexpr const char* kDxfTextStyle = "kst32b";

// One line of text as the release encodes it, cut where a character would pass the limit in bytes. Control characters
// become blanks; what readers would take for a control sequence is escaped.
std::string dxfText(std::string_view text, DxfVersion version, std::size_t limit = std::string::npos);

// A layer's name without the characters that DXF forbids in names.
std::string dxfLayer(std::string_view name, DxfVersion version);

class DxfWriter {
  public:
    using Handle = std::uint64_t;
    struct Owners {
        Handle modelSpace = 0;
        Handle paperSpace = 0;
    };

    DxfWriter(std::ostream& out, DxfVersion version) : out_(out), version_(version) {
        owners_ = {newHandle(), newHandle()};
    }

    DxfVersion version() const { return version_; }
    bool isOld() const { return version_ == DxfVersion::R12; } // without handles, owners and subclasses
    const Owners& owners() const { return owners_; }
    Handle newHandle() { return ++lastHandle_; }
    Handle lastHandle() const { return lastHandle_; }

    void group(int code, std::string_view value) {
        out_.integer(code);
        out_ << "\r\n" << value << "\r\n";
    }
    void text(int code, std::string_view value, std::size_t limit = std::string::npos) {
        group(code, dxfText(value, version_, limit));
    }
    template <typename Integer>
    void integer(int code, Integer value) {
        out_.integer(code);
        out_ << "\r\n";
        out_.integer(value);
        out_ << "\r\n";
    }
    void real(int code, double value) {
        out_.integer(code);
        out_ << "\r\n";
        out_.real(value);
        out_ << "\r\n";
    }
    void handle(int code, Handle value);
    // Codes 10 and 20 for the first point of an entity, 11 and 21 for the second; with a height also 30, 31.
    void point(int code, double x, double y) {
        real(code, x);
        real(code + 10, y);
    }
    void point(int code, double x, double y, double z) {
        point(code, x, y);
        real(code + 20, z);
    }
    void subclass(std::string_view name) {
        if (!isOld()) {
            group(100, name);
        }
    }

    void beginSection(std::string_view name) {
        group(0, "SECTION");
        group(2, name);
    }
    void endSection() { group(0, "ENDSEC"); }

    // A table; its records name it as their owner.
    void beginTable(std::string_view name, int records);
    void endTable() { group(0, "ENDTAB"); }
    // A record of the table, up to its name and flags; with a new handle unless one is given. Returns the handle.
    Handle record(std::string_view type, std::string_view subclassName, std::string_view name, Handle handle = 0);

    // An entity of the model space, up to its own subclass.
    void entity(std::string_view type, std::string_view layer, std::string_view subclassName);

  private:
    WriterBuffer out_;
    DxfVersion version_;
    Owners owners_;
    Handle lastHandle_ = 0;
    Handle table_ = 0;
};

} // namespace fenmark::exchange
