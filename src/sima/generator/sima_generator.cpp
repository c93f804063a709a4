// Large SIMA files for measuring and trying out.
#include "sima/generator/sima_generator.h"

#include "sima/text/cp932.h"
#include "values/real_text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <ostream>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace fenmark::sima {

namespace {

constexpr double kSpacing = 20.0;      // metres between grid points
constexpr double kJitter = 4.0;        // metres
constexpr double kNorthing = -45000.0; // of the first grid point, metres
constexpr double kEasting = 12000.0;
// Columns of a padded file.
constexpr std::size_t kNumberWidth = 5;
constexpr std::size_t kNameWidth = 12;
constexpr std::size_t kCoordinateWidth = 11;
constexpr std::size_t kHeightWidth = 8;
constexpr std::size_t kPiece = std::size_t{1} << 18;

struct PlanPosition {
    double northing = 0.0;
    double easting = 0.0;
};

class Generator {
  public:
    Generator(std::ostream& out, const GeneratorSizes& sizes)
        : out_(out), sizes_(sizes), random_(sizes.seed),
          columns_(std::max(2, static_cast<std::int32_t>(std::ceil(std::sqrt(std::max(0, sizes.points)))))) {}

    void run() {
        line("Z00,", "生成した村,");
        line("G00,", "03,", "座標と画地,");
        points();
        for (std::int32_t lot = 0; lot < sizes_.lots; ++lot) {
            writeLot(lot);
        }
        for (std::int32_t route = 0; route < sizes_.routes; ++route) {
            writeRoute(route);
        }
        flush();
    }

  private:
    // A number of three decimals, for coordinates in metres.
    std::string metres(double value) {
        std::array<char, 32> buffer;
        const auto end = writeFixedReal(buffer.data(), buffer.data() + buffer.size(), value, 3);
        return std::string(buffer.data(), end.ptr);
    }
    // Evenly in [-1, 1), the same on every machine.
    double spread() { return static_cast<double>(random_() >> 11) * 0x1p-52 - 1.0; }

    template <typename... Pieces>
    void line(const Pieces&... pieces) {
        text_.clear();
        (text_.append(pieces), ...);
        encodeCp932(bytes_, text_);
        bytes_ += "\r\n";
        if (bytes_.size() >= kPiece) {
            flush();
        }
    }
    void flush() {
        out_.write(bytes_.data(), static_cast<std::streamsize>(bytes_.size()));
        bytes_.clear();
    }

    // In columns of a fixed width where the file is padded; a kanji is two columns wide.
    std::string toTheRight(std::string text, std::size_t width) const {
        return sizes_.padded && text.size() < width ? text.insert(0, width - text.size(), ' ') : text;
    }
    std::string toTheLeft(std::string text) const {
        const auto wide = static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
            return static_cast<unsigned char>(c) >= 0xE0; // the first of the three bytes of a kanji
        }));
        const std::size_t columns = text.size() - wide;
        return sizes_.padded && columns < kNameWidth ? text.append(kNameWidth - columns, ' ') : text;
    }
    std::string numberText(std::int32_t number) const { return toTheRight(std::to_string(number), kNumberWidth); }

    std::string pointName(std::int32_t number) const {
        return (number % 10 == 0 ? "境界" : "K") + std::to_string(number);
    }

    void points() {
        positions_.reserve(static_cast<std::size_t>(std::max(0, sizes_.points)));
        line("A00,");
        for (std::int32_t i = 0; i < sizes_.points; ++i) {
            const std::int32_t row = i / columns_;
            const std::int32_t column = i % columns_;
            const PlanPosition position{kNorthing + kSpacing * row + kJitter * spread(),
                                        kEasting + kSpacing * column + kJitter * spread()};
            positions_.push_back(position);
            const std::string height =
                i % 3 == 0 ? toTheRight(metres(30.0 + 5.0 * spread()), kHeightWidth) : std::string();
            line("A01,", numberText(i + 1), ",", toTheLeft(pointName(i + 1)), ",",
                 toTheRight(metres(position.northing), kCoordinateWidth), ",",
                 toTheRight(metres(position.easting), kCoordinateWidth), ",", height, ",");
        }
        line("A99,");
    }

    void reference(std::int32_t index) {
        line("B01,", numberText(index + 1), ",", toTheLeft(pointName(index + 1)), ",");
    }

    // Cells of the grid, one after the other, begun again when there are no more.
    void writeLot(std::int32_t lot) {
        const std::int32_t cellColumns = columns_ - 1;
        const std::int32_t rows = sizes_.points / columns_;
        if (rows < 2) {
            return;
        }
        const std::int32_t cell = lot % (cellColumns * (rows - 1));
        const std::int32_t corner = cell / cellColumns * columns_ + cell % cellColumns;
        std::string name = lot % 10 == 0 ? "大字中" : "";
        name += std::to_string(100 + lot / 20) + "-" + std::to_string(lot % 20 + 1);
        line("D00,", numberText(lot + 1), ",", toTheLeft(std::move(name)), ",1,");
        for (const std::int32_t index : {corner, corner + 1, corner + columns_ + 1, corner + columns_}) {
            reference(index);
        }
        line("D99,");
    }

    void writeRoute(std::int32_t route) {
        constexpr std::int32_t kRoutePoints = 10;
        if (sizes_.points < 4) {
            return;
        }
        const std::int32_t count = std::min({kRoutePoints, columns_, sizes_.points});
        const std::int32_t slots = std::max(1, sizes_.points / count);
        const std::int32_t first = route % slots * count;
        const std::int32_t type = route % 7 + 1;
        const std::string number = std::to_string(route + 1);
        line("F00,", number, ",1,", "路線", number, ",", std::to_string(type), ",");
        line("F03,0.000,");
        double length = 0.0;
        for (std::int32_t i = first; i < first + count; ++i) {
            reference(i);
            if (i > first) {
                length += distance(i - 1, i);
            }
        }
        line("F99,");
        if (type == 2 || type == 3 || type == 7) {
            writeResults(number, length);
        }
    }

    double distance(std::int32_t from, std::int32_t to) const {
        const PlanPosition& a = positions_[static_cast<std::size_t>(from)];
        const PlanPosition& b = positions_[static_cast<std::size_t>(to)];
        return std::hypot(b.northing - a.northing, b.easting - a.easting);
    }

    struct Heights {
        std::string stakeHead;
        std::string ground;
    };
    // Drawn one after the other: the arguments of a call have no order of their own.
    Heights makeHeights() {
        Heights heights;
        heights.stakeHead = metres(31.0 + spread());
        heights.ground = metres(30.0 + spread());
        return heights;
    }

    // Stations from the start on, all before the end even where the route is laid a little shorter.
    void writeResults(const std::string& number, double length) {
        if (sizes_.longitudinal > 0) {
            line("H00,", number, ",", "路線", number, ",");
            for (std::int32_t i = 0; i < sizes_.longitudinal; ++i) {
                const Heights heights = makeHeights();
                line("H01,No.", std::to_string(i), ",", metres(0.9 * length * i / sizes_.longitudinal), ",",
                     heights.ground, ",", heights.stakeHead, ",1,");
            }
            line("H99,");
        }
        if (sizes_.crossSections > 0) {
            line("I00,", number, ",", "路線", number, ",");
            for (std::int32_t i = 0; i < sizes_.crossSections; ++i) {
                const Heights heights = makeHeights();
                line("I01,No.", std::to_string(i), ",", metres(0.9 * length * i / sizes_.crossSections), ",",
                     heights.ground, ",", heights.stakeHead, ",");
                for (const char* offset : {"-10.000", "-4.000", "0.000", "4.000", "10.000"}) {
                    line("I02,,", offset, ",", metres(30.0 + spread()), ",");
                }
            }
            line("I99,");
        }
    }

    std::ostream& out_;
    GeneratorSizes sizes_;
    std::mt19937_64 random_;
    std::int32_t columns_;
    std::vector<PlanPosition> positions_;
    std::string text_;
    std::string bytes_;
};

} // namespace

void generateSima(std::ostream& out, const GeneratorSizes& sizes) {
    Generator(out, sizes).run();
}

} // namespace fenmark::sima
