// Finds objects of a drawing by their names.
#include "desk/plan/name_search.h"

#include "desk/plan/plan_text.h"
#include "exchange/kinds.h"
#include "sima/text/number.h"
#include "sima/text/utf8.h"
#include "values/ascii_case.h"

#include <algorithm>
#include <array>
#include <optional>

namespace fenmark::desk {

using drawing::Drawing;
using drawing::EntityView;

namespace {

// The time that takes grows with the square of the accents in a row, so that endless names are taken in pieces.
QString normalized(const QString& text) {
    constexpr qsizetype kPiece = 500; // characters
    QString all;
    for (qsizetype at = 0; at < text.size(); at += kPiece) {
        all += text.mid(at, kPiece).normalized(QString::NormalizationForm_KC);
    }
    return all;
}

void appendFolded(std::string& out, std::string_view name) {
    name = sima::trim(name);
    if (!sima::isAscii(name)) {
        out += normalized(fromUtf8(name)).toCaseFolded().trimmed().toStdString();
        return;
    }
    out += asciiLower(name);
}

// Results of sections bear the number of their route, which names none of them.
bool hasNumberOfItsOwn(const EntityView& entity) {
    return entity.row && !isResult(exchange::kindOf(entity));
}

// Objects as good as each other, of which no more are kept than are wanted.
enum Rank { Equal, Number, Begins, Holds, kRanks };

} // namespace

NameSearch::NameSearch(const Drawing& drawing) : drawing_(drawing), alignments_(drawing.alignmentCount()) {
    starts_.reserve(alignments_ + drawing.entityCount());
    for (std::size_t i = 0; i < alignments_; ++i) {
        add(drawing.alignment(i).name);
    }
    for (std::size_t i = 0; i < drawing.entityCount(); ++i) {
        const EntityView entity = drawing.entity(i);
        add(entity.row ? entity.row->name : std::string_view());
    }
}

void NameSearch::add(std::string_view name) {
    starts_.push_back(names_.size());
    appendFolded(names_, name);
    names_ += '\0';
}

PlanObject NameSearch::objectAt(std::size_t entry) const {
    if (entry < alignments_) {
        return {PlanObject::Kind::Alignment, entry, {}};
    }
    return {PlanObject::Kind::Entity, entry - alignments_, {}};
}

NameSearch::Result NameSearch::find(const QString& text, std::size_t most) const {
    std::string wanted;
    appendFolded(wanted, text.toStdString());
    Result result;
    if (wanted.empty()) {
        return result;
    }
    std::array<std::vector<PlanObject>, kRanks> ranks;
    auto found = [&](Rank rank, std::size_t entry) {
        ++result.total;
        if (ranks[rank].size() < most) {
            ranks[rank].push_back(objectAt(entry));
        }
    };
    auto isEqual = [&](std::size_t entry) {
        return std::string_view(names_).substr(starts_[entry]).starts_with(wanted) &&
               names_[starts_[entry] + wanted.size()] == '\0';
    };

    std::int32_t number = 0;
    if (sima::toPlainInteger(wanted, number)) {
        for (std::size_t entry = alignments_; entry < starts_.size(); ++entry) {
            const EntityView entity = drawing_.entity(entry - alignments_);
            if (hasNumberOfItsOwn(entity) && entity.row->no == number && !isEqual(entry)) {
                found(Number, entry);
            }
        }
    } else {
        number = -1;
    }
    auto hasNumber = [&](std::size_t entry) {
        if (number < 0 || entry < alignments_) {
            return false;
        }
        const EntityView entity = drawing_.entity(entry - alignments_);
        return hasNumberOfItsOwn(entity) && entity.row->no == number;
    };

    std::size_t entry = 0;
    for (std::size_t at = names_.find(wanted); at != std::string::npos; at = names_.find(wanted, at)) {
        entry = static_cast<std::size_t>(
                    std::upper_bound(starts_.begin() + static_cast<std::ptrdiff_t>(entry), starts_.end(), at) -
                    starts_.begin()) -
                1;
        if (isEqual(entry)) {
            found(Equal, entry);
        } else if (!hasNumber(entry)) {
            found(at == starts_[entry] ? Begins : Holds, entry);
        }
        if (++entry == starts_.size()) {
            break;
        }
        at = starts_[entry];
    }
    for (const std::vector<PlanObject>& rank : ranks) {
        for (const PlanObject& object : rank) {
            if (result.objects.size() < most) {
                result.objects.push_back(object);
            }
        }
    }
    return result;
}

} // namespace fenmark::desk
