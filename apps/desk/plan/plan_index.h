// Which objects of a drawing lie in a box: a packed tree of boxes over the drawing, made once and asked at every paint.
//
// Entities are ordered in tiles (drawing/box_tree.h) and packed sixteen to a node. Building takes the time of one sort; asking takes time in step with what the box holds,
// however unevenly the drawing is spread.
#pragma once

#include "desk/plan/plan_style.h"
#include "drawing/box_tree.h"
#include "drawing/drawing.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace fenmark::desk {

// What painting needs of an entity without asking the drawing.
struct PlanFigure {
    drawing::TreeBox box; // in the frame of the index: metres from the corner of the drawing, rounded outwards
    std::uint32_t entity;
    std::uint32_t layer : 24;
    std::uint32_t style : 8;

    FigureStyle figureStyle() const { return static_cast<FigureStyle>(style); }
    bool isPoint() const { return figureStyle() <= FigureStyle::OtherPoint; }
};

class PlanIndex {
  public:
    PlanIndex() = default;
    explicit PlanIndex(const drawing::Drawing& drawing);

    // Entities that have a place in the plan; those without vertices, or with coordinates that are no numbers, are not
    // among them.
    std::size_t size() const { return figures_.size(); }
    // Of these entities and of all alignments.
    const drawing::Extent& extent() const { return extent_; }

    // Calls visit(const PlanFigure&) once for each entity whose box meets the given one, in no certain order. The
    // visitor answers whether to go on.
    template <typename Visit>
    void query(const drawing::Extent& box, Visit&& visit) const {
        if (!levels_.empty() && !box.empty()) {
            queryNode(levels_.size() - 1, 0, boxFrom(box), visit);
        }
    }
    // Number of entities whose boxes meet the given one, counted to the limit at most.
    std::size_t count(const drawing::Extent& box, std::size_t limit) const;

    drawing::Extent extentOf(const PlanFigure& figure) const;
    // Middle of the figure's box.
    double middleX(const PlanFigure& figure) const {
        return originX_ + 0.5 * (static_cast<double>(figure.box.minX) + static_cast<double>(figure.box.maxX));
    }
    double middleY(const PlanFigure& figure) const {
        return originY_ + 0.5 * (static_cast<double>(figure.box.minY) + static_cast<double>(figure.box.maxY));
    }
    // How far middleX and middleY may lie from the true middle, metres.
    double roundingMetres() const { return rounding_; }

    // Alignments as the index knows them; the drawing may hold more by now.
    std::size_t alignmentCount() const { return alignments_.size(); }
    const drawing::Extent& alignmentExtent(std::size_t alignment) const { return alignments_[alignment].whole; }
    std::size_t elementCount(std::size_t alignment) const { return alignments_[alignment].elements.size(); }
    const drawing::Extent& elementExtent(std::size_t alignment, std::size_t element) const {
        return alignments_[alignment].elements[element];
    }

  private:
    static constexpr std::size_t kFanOut = 16;

    struct AlignmentBoxes {
        drawing::Extent whole;
        std::vector<drawing::Extent> elements;
    };

    drawing::TreeBox boxFrom(const drawing::Extent& extent) const;
    void addAlignments(const drawing::Drawing& drawing);
    void buildTree();
    std::size_t countNode(std::size_t level, std::size_t node, const drawing::TreeBox& box, std::size_t limit) const;
    // Entities below a node of a level.
    std::size_t sizeOf(std::size_t level, std::size_t node) const;

    template <typename Visit>
    bool queryNode(std::size_t level, std::size_t node, const drawing::TreeBox& box, Visit&& visit) const {
        if (!levels_[level][node].meets(box)) {
            return true;
        }
        const std::size_t first = node * kFanOut;
        if (level == 0) {
            const std::size_t last = first + kFanOut < figures_.size() ? first + kFanOut : figures_.size();
            for (std::size_t i = first; i < last; ++i) {
                if (figures_[i].box.meets(box) && !visit(figures_[i])) {
                    return false;
                }
            }
            return true;
        }
        const std::size_t below = levels_[level - 1].size();
        const std::size_t last = first + kFanOut < below ? first + kFanOut : below;
        for (std::size_t i = first; i < last; ++i) {
            if (!queryNode(level - 1, i, box, visit)) {
                return false;
            }
        }
        return true;
    }

    drawing::Extent extent_;
    double originX_ = 0.0;
    double originY_ = 0.0;
    double rounding_ = 0.0;
    std::vector<PlanFigure> figures_; // tile after tile
    std::vector<std::vector<drawing::TreeBox>>
        levels_; // around sixteen figures, around sixteen of these, and so on up to one
    std::vector<AlignmentBoxes> alignments_;
};

} // namespace fenmark::desk
