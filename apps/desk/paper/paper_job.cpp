// What is to be printed, and its pages.
#include "desk/paper/paper_job.h"

#include "exchange/report/pages.h"

#include <QString>
#include <QStringList>

#include <cmath>

namespace fenmark::desk {

using exchange::ReportOptions;
using exchange::ReportPart;

namespace {

constexpr int kSmallestScale = 100'000'000;

ReportOptions only(std::initializer_list<ReportPart> parts) {
    ReportOptions options;
    options.parts.fill(false);
    for (const ReportPart part : parts) {
        options.parts[static_cast<std::size_t>(part)] = true;
    }
    return options;
}

} // namespace

bool needsAlignment(PaperKind kind) {
    return kind == PaperKind::Along || kind == PaperKind::Profile || kind == PaperKind::CrossSections ||
           kind == PaperKind::Stakes;
}

bool hasScale(PaperKind kind) {
    return kind <= PaperKind::CrossSections;
}

exchange::Plot pagesOf(const drawing::Drawing& drawing, const PaperJob& job) {
    exchange::PlotOptions options = job.options;
    for (const TitleText& text : kTitleTexts) {
        const auto found = job.texts.find(text.key);
        if (found == job.texts.end() || found->second.empty()) {
            continue;
        }
        if (&text == &kTitleTexts.front() && hasScale(job.kind)) {
            options.heading = found->second;
        } else {
            options.titles.emplace_back(text.title, found->second);
        }
    }
    if (needsAlignment(job.kind) && job.alignment >= drawing.alignmentCount()) {
        exchange::Plot plot;
        plot.failure = {exchange::ObstacleCode::NoAlignment};
        return plot;
    }
    switch (job.kind) {
    case PaperKind::Plan:
        return exchange::plotPlan(drawing, options);
    case PaperKind::Along:
        return exchange::plotAlong(drawing, job.alignment, options);
    case PaperKind::Profile:
        return exchange::plotProfile(drawing, job.alignment, options);
    case PaperKind::CrossSections:
        return exchange::plotCrossSections(drawing, job.alignment, options);
    case PaperKind::Stakes: {
        exchange::StakeOptions stakes;
        stakes.every = job.stakePitch;
        stakes.offsets = job.stakeOffsets;
        stakes.mainPoints = true;
        return exchange::stakePages(drawing, exchange::stakesOf(drawing, job.alignment, stakes), options);
    }
    case PaperKind::Lots:
        return exchange::reportPages(drawing, only({ReportPart::Lots}), options);
    case PaperKind::Points:
        return exchange::reportPages(drawing, only({ReportPart::Points}), options);
    case PaperKind::Alignments:
        break;
    }
    return exchange::reportPages(
        drawing, only({ReportPart::MainPoints, ReportPart::Ips, ReportPart::Intermediate, ReportPart::Widths}),
        options);
}

std::optional<std::vector<double>> offsetsOf(const std::string& text) {
    std::vector<double> offsets;
    for (const QString& part : QString::fromStdString(text).split(QLatin1Char(','))) {
        bool number = false;
        const double offset = part.trimmed().toDouble(&number);
        if (!number || !std::isfinite(offset)) {
            return std::nullopt;
        }
        offsets.push_back(offset);
    }
    return offsets;
}

std::optional<int> scaleOf(const std::string& text) {
    QString number = QString::fromStdString(text).trimmed();
    if (number.startsWith(QStringLiteral("1:"))) {
        number = number.mid(2);
    }
    bool whole = false;
    const int scale = number.trimmed().toInt(&whole);
    return whole && scale >= 1 && scale <= kSmallestScale ? std::optional(scale) : std::nullopt;
}

} // namespace fenmark::desk
