// Whether a file's pages are sound enough to be written to.
#include "drawing/geopackage/soundness.h"

#include <charconv>
#include <string>
#include <string_view>

namespace fenmark::drawing {

namespace {

// Rows against a rule of a table that another program added: the pages are sound.
bool isOfRules(std::string_view finding) {
    return finding.starts_with("NULL value in ") || finding.starts_with("CHECK constraint failed in ");
}

// The code of the failure that kept a page from being read; SQLITE_OK for a finding in a page that was.
int failureIn(std::string_view finding) {
    constexpr std::string_view kBefore = "error code=";
    const std::size_t at = finding.find(kBefore);
    int code = SQLITE_OK;
    if (at != std::string_view::npos) {
        const std::string_view digits = finding.substr(at + kBefore.size());
        std::from_chars(digits.data(), digits.data() + digits.size(), code);
    }
    return code;
}

// SQLite heads its findings on pages with a line of its own.
std::string_view withoutTitle(std::string_view finding) {
    if (finding.starts_with("***")) {
        const std::size_t end = finding.find('\n');
        return end == std::string_view::npos ? finding : finding.substr(end + 1);
    }
    return finding;
}

} // namespace

void requireSoundPages(Connection& connection) {
    Statement check(connection, "PRAGMA quick_check");
    while (check.step()) {
        const std::string_view finding = check.text(0);
        if (finding == "ok" || isOfRules(finding)) {
            continue;
        }
        if (const int code = failureIn(finding); (code & 0xFF) == SQLITE_IOERR || (code & 0xFF) == SQLITE_NOMEM) {
            connection.fail(code);
        }
        const std::string_view findings = withoutTitle(finding);
        const std::string first(findings.substr(0, findings.find('\n')));
        throw StoreFailure{Failure::Damaged,
                           {first + "; what can be read can be exported, or saved under another name",
                            first + "。読める内容は、書き出すか別の名前で保存できます"}};
    }
}

} // namespace fenmark::drawing
