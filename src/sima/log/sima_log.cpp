// The import log.
#include "sima/log/sima_log.h"

#include "sima/text/cp932.h"
#include "sima/text/path.h"
#include "sima/text/utf8.h"

#include <array>
#include <cerrno>
#include <fstream>
#include <system_error>

namespace fenmark::sima {

namespace {

constexpr std::string_view kBanner = "----- Brindlow　Version1.0 -----\n";
constexpr std::string_view kErrorRule = "ERROR --------------------------------------------------------";
constexpr std::string_view kClosingRule = "--------------------------------------------------------------";

// A number in at least the given count of digits, as printf's "%.5d" and "%d" write it.
class Number {
  public:
    explicit Number(std::int32_t value, int digits = 1) {
        std::uint32_t rest = value < 0 ? 0U - static_cast<std::uint32_t>(value) : static_cast<std::uint32_t>(value);
        char* const end = buffer_.data() + buffer_.size();
        char* start = end;
        for (; rest != 0 || digits > 0; --digits, rest /= 10)
            *--start = static_cast<char>('0' + rest % 10);
        if (value < 0)
            *--start = '-';
        text_ = {start, static_cast<std::size_t>(end - start)};
    }
    Number(const Number&) = delete;
    Number& operator=(const Number&) = delete;
    operator std::string_view() const { return text_; }

  private:
    std::array<char, 16> buffer_;
    std::string_view text_;
};

// Route types that become alignments; the others become polylines.
bool isAlignmentType(std::int32_t routeType) {
    return routeType == 2 || routeType == 3 || routeType == 7;
}

// Gathers encoded lines and writes them in large pieces.
class LogFile {
  public:
    LogFile(const std::string& name, std::ios::openmode mode) : name_(name) {
        errno = 0;
        file_.open(pathOf(name), mode | std::ios::out | std::ios::binary);
        check();
    }

    // The text and a line feed; every line feed becomes CR LF, those inside the text too.
    void writeLine(std::string_view text) {
        for (std::size_t at = text.find('\n'); at != std::string_view::npos; at = text.find('\n')) {
            encodeCp932(buffer_, text.substr(0, at));
            buffer_ += "\r\n";
            text.remove_prefix(at + 1);
        }
        encodeCp932(buffer_, text);
        buffer_ += "\r\n";
        if (buffer_.size() >= kPiece)
            flush();
    }

    void close() {
        flush();
        file_.close();
        check();
    }

  private:
    static constexpr std::size_t kPiece = std::size_t{1} << 18;

    void flush() {
        file_.write(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
        buffer_.clear();
        check();
    }
    void check() {
        if (file_.fail())
            throw std::system_error(errno != 0 ? errno : EIO, std::generic_category(), name_);
    }

    std::string name_;
    std::ofstream file_;
    std::string buffer_;
};

} // namespace

void SimaLog::coordinateBegin(std::int32_t line) {
    lines_.append({Number(line, 5), " A00 座標データの読み込み開始"});
}

void SimaLog::lotBegin(std::int32_t line) {
    lines_.append({Number(line, 5), " D00 画地データの読み込み開始"});
}

void SimaLog::lotEnd(std::int32_t line, bool ok, std::int32_t pointCount, bool hasTriangleData) {
    lines_.append({Number(line, 5), " D99 画地データの読み込み終了"});
    if (!ok) {
        lines_.append("ERROR     画地を作成できませんでした\n");
    } else if (hasTriangleData) {
        lines_.append({"          ", Number(pointCount), "点の構成点"});
        lines_.append("          三斜データは読み込みません\n");
    } else {
        lines_.append({"          ", Number(pointCount), "点の構成点\n"});
    }
}

void SimaLog::routeBegin(std::int32_t line) {
    lines_.append({Number(line, 5), " F00 路線データの読み込み開始"});
}

void SimaLog::routeEnd(std::int32_t line, bool ok, std::int32_t routeType, std::int32_t count, std::string_view name) {
    lines_.append({Number(line, 5), " F99 路線データの読み込み終了"});
    if (!ok) {
        lines_.append(isAlignmentType(routeType) ? "ERROR     平面線形を作成できませんでした\n"
                                                 : "ERROR     ポリラインを作成できませんでした\n");
    } else if (isAlignmentType(routeType)) {
        lines_.append({"          平面線形”", name, "”"});
        lines_.append({"          ", Number(count), "個の線形要素\n"});
    } else {
        lines_.append({"          ", Number(count), "点の構成点\n"});
    }
}

// The line says G01 although the record is G00, which is meant.
void SimaLog::version(std::int32_t line, std::string_view text) {
    lines_.append({Number(line, 5), " G01 SIMAのバージョン： ", text, "\n"});
}

void SimaLog::longitudinalBegin(std::int32_t line, std::string_view alignmentName) {
    lines_.append({Number(line, 5), " H00 縦断成果データの読み込み開始"});
    if (alignmentName.empty())
        lines_.append("ERROR     中心線が指定されませんでした");
    else
        lines_.append({"          中心線”", alignmentName, "”の縦断成果データ"});
}

void SimaLog::longitudinalEnd(std::int32_t line, bool ok, std::int32_t pointCount) {
    lines_.append({Number(line, 5), " H99 縦断成果データの読み込み終了"});
    lines_.append({"          ", Number(pointCount), ok ? "点のポイント\n" : "点のポイント"});
    if (!ok)
        lines_.append("ERROR     縦断成果をポイントに変換できませんでした\n");
}

void SimaLog::crossSectionBegin(std::int32_t line, std::string_view alignmentName) {
    lines_.append({Number(line, 5), " I00 横断成果データの読み込み開始"});
    if (alignmentName.empty())
        lines_.append("ERROR     中心線が指定されませんでした");
    else
        lines_.append({"          中心線”", alignmentName, "”の横断成果データ"});
}

void SimaLog::crossSectionItem(std::int32_t line, std::string_view sectionName) {
    lines_.append({Number(line, 5), " I01 断面 ", sectionName, " データを処理"});
}

void SimaLog::crossSectionPoints(std::int32_t count) {
    lines_.append({"          ", Number(count), "個のポイント"});
}

void SimaLog::crossSectionEnd(std::int32_t line, bool ok, std::int32_t pointCount) {
    lines_.append({Number(line, 5), " I99 横断成果データの読み込み終了"});
    lines_.append({"          ", Number(pointCount), ok ? "点のポイント\n" : "点のポイント"});
    if (!ok)
        lines_.append("ERROR     横断成果をポイントに変換できませんでした\n");
}

void SimaLog::finished(std::int32_t line) {
    lines_.append({Number(line, 5), "     読み込み終了"});
}

void SimaLog::errorBlock(std::string_view firstText, std::string_view secondText) {
    errors_.append(kErrorRule);
    errors_.append(firstText);
    errors_.append(secondText);
    errors_.append(kClosingRule);
    ++errorCount_;
}

void SimaLog::setFileName(std::string_view path) {
    fileName_ = withoutLastCharacters(path, 4);
    fileName_ += "_Input.log";
}

void SimaLog::writeAll() const {
    LogFile file(fileName_, std::ios::trunc);
    file.writeLine(kBanner);
    for (std::size_t i = 0; i < lines_.size(); ++i)
        file.writeLine(lines_[i]);
    for (std::size_t i = 0; i < errors_.size(); ++i)
        file.writeLine(errors_[i]);
    file.close();
}

void SimaLog::writeErrorsOnly() const {
    LogFile file(fileName_, std::ios::trunc);
    for (std::size_t i = 0; i < errors_.size(); ++i)
        file.writeLine(errors_[i]);
    file.close();
}

void SimaLog::appendLines(const std::vector<std::string>& lines) const {
    LogFile file(fileName_, std::ios::app);
    for (const std::string& line : lines)
        file.writeLine(line);
    file.close();
}

void SimaLog::clear() {
    lines_.clear();
    errors_.clear();
}

std::string baseNameOf(std::string_view path) {
    const std::string_view name = path.substr(fileNameStart(path));
    return std::string(name.substr(0, name.rfind('.')));
}

} // namespace fenmark::sima
