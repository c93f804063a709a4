// fenmark import: file by file, each into its own drawing or all into one.
#include "cli/commands.h"
#include "cli/import_answer.h"
#include "cli/import_drawing.h"
#include "cli/import_file.h"
#include "cli/messages.h"
#include "drawing/imported_file.h"
#include "host/embedded/embedded_host.h"
#include "platform/files.h"
#include "platform/paths.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

namespace fenmark::cli {

namespace {

using host::embedded::EmbeddedHost;

std::string drawingBeside(const std::string& file) {
    return file.substr(0, file.size() - 4) + ".gpkg";
}

// The drawing open at the moment: each file has its own, or all have one.
class OpenDrawing {
  public:
    // Raises Stop if the drawing cannot be read.
    EmbeddedHost& at(const std::string& path, const ImportArguments& arguments, const Streams& streams) {
        if (host_ && path == path_) {
            return *host_;
        }
        host_.reset();
        auto host = std::make_unique<EmbeddedHost>();
        openForImport(*host, path, arguments, streams);
        host_ = std::move(host);
        path_ = path;
        return *host_;
    }
    // What is in memory may no longer be what is on disk.
    void forget() { host_.reset(); }
    // The imports of this call into the drawing.
    std::vector<host::MdDbObjectId>& madeNow(const std::string& path) { return madeNow_[path]; }

  private:
    std::unique_ptr<EmbeddedHost> host_;
    std::string path_;
    std::map<std::string, std::vector<host::MdDbObjectId>> madeNow_; // by drawing
};

// The import that comes second to a drawing is done again on what the first one left.
FileResult importInTurn(OpenDrawing& open, const ImportArguments& arguments, const std::string& file,
                        const std::string& drawingPath, const Streams& streams) {
    constexpr int kAttempts = 5;
    for (int attempt = 1;; ++attempt) {
        try {
            return importFile(open.at(drawingPath, arguments, streams), arguments, file, drawingPath,
                              open.madeNow(drawingPath), streams);
        } catch (const Overtaken&) {
            open.forget();
            if (streams.report != nullptr) {
                *streams.report = {};
            }
            if (attempt == kAttempts) {
                throw;
            }
        }
    }
}

} // namespace

int runImport(const ImportArguments& arguments, const Streams& given) {
    OpenDrawing open;
    std::map<std::filesystem::path, std::string> files; // of this call, by their logs: a.sim and a.SIM have one
    nlohmann::ordered_json results = nlohmann::ordered_json::array();
    int code = kDone;
    for (const std::string& file : arguments.files) {
        FileReport report;
        Streams streams = given;
        streams.report = arguments.json ? &report : nullptr;
        nlohmann::ordered_json json = jsonOf(file, arguments.drawing.value_or(""));
        std::string failure;
        try {
            requireReadableSimFile(file, streams.language);
            const std::string logPath = drawing::logOf(file);
            const auto [other, isFirst] = files.try_emplace(platform::pathOf(logPath).lexically_normal(), file);
            if (!isFirst && !platform::leadToOneFile(other->second, file)) {
                throw Stop(kNotDone, said(streams.language, Text::LogOverLog,
                                          {{"path", file}, {"log", logPath}, {"other", other->second}}));
            }
            const std::string drawingPath = arguments.drawing.value_or(drawingBeside(file));
            json = jsonOf(file, drawingPath);
            const FileResult made = importInTurn(open, arguments, file, drawingPath, streams);
            code = std::max(code, made.code);
            if (arguments.json) {
                addResult(json, made.result, made.logPath);
            } else {
                printResult(streams.out, made.result, arguments.files.size() > 1);
            }
            tellNote(streams, arguments.quiet,
                     inLanguage(streams, "図面 " + drawingPath + "、ログ " + made.logPath,
                                "drawing " + drawingPath + ", log " + made.logPath));
        } catch (const Stop& stop) {
            open.forget();
            code = std::max(code, stop.code());
            failure = stop.what();
        } catch (...) {
            open.forget();
            code = std::max<int>(code, kNotDone);
            failure = file + ": " + currentExceptionText(streams.language);
        }
        if (!failure.empty()) {
            tellError(streams, failure);
            json["log"] = nullptr;
            json["errors"] = report.errors.size();
        }
        if (arguments.json) {
            addReport(json, report);
            json["failure"] = failure.empty() ? nlohmann::ordered_json() : nlohmann::ordered_json(failure);
            results.push_back(std::move(json));
        }
    }
    if (arguments.json) {
        // A record or a name that is no UTF-8 must not keep back what was done.
        given.out << results.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << '\n';
    }
    return code;
}

} // namespace fenmark::cli
