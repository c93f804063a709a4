// The hand that measures in the plan: takes places by clicks, snapped, and paints what it has taken.
#pragma once

#include "desk/language/texts.h"
#include "desk/measure/measurement.h"
#include "desk/measure/snap.h"
#include "desk/plan/plan_tool.h"

#include <functional>
#include <optional>
#include <vector>

namespace fenmark::desk {

enum class MeasureMode { Distance, Area, Place };

class MeasureTool : public PlanTool {
  public:
    // The scene is asked for at each step, since drawing and view change under the tool.
    using Scene = std::function<std::optional<SnapScene>()>;

    MeasureTool(Scene scene, const Texts& texts) : scene_(std::move(scene)), texts_(texts) {}

    // Called when what was taken has changed (true), or only what the pointer means (false).
    void onChange(std::function<void(bool taken)> changed) { changed_ = std::move(changed); }
    // Called when Escape is pressed with nothing taken.
    void onEnd(std::function<void()> end) { end_ = std::move(end); }
    // The alignment that stations and offsets refer to; the nearest shown one where there is none.
    void setAlignment(std::optional<std::size_t> alignment) { alignment_ = alignment; }

    MeasureMode mode() const { return mode_; }
    void setMode(MeasureMode mode);
    const SnapChoice& choice() const { return choice_; }
    void setChoice(const SnapChoice& choice) { choice_ = choice; }
    void clear();

    const std::vector<Snap>& taken() const { return taken_; }
    bool finished() const { return finished_; } // the next click begins anew
    const std::optional<Snap>& meant() const { return meant_; }
    // What was taken, as a table.
    Sheet sheet(const drawing::Drawing& drawing) const;

    void press(const QPointF& pixel) override;
    void move(const QPointF& pixel) override;
    void leave() override;
    bool key(int qtKey) override;
    void doublePress() override;
    void paint(QPainter& painter, const ViewTransform& view, const QFont& font) const override;

  private:
    std::optional<Snap> snap(const QPointF& pixel) const;
    void tell(bool taken) const;
    void finish();

    Scene scene_;
    const Texts& texts_;
    std::function<void(bool)> changed_;
    std::function<void()> end_;
    MeasureMode mode_ = MeasureMode::Distance;
    SnapChoice choice_;
    std::optional<std::size_t> alignment_;
    std::vector<Snap> taken_;
    std::vector<std::optional<std::size_t>> alignments_; // of the places that were taken
    bool finished_ = false;
    std::optional<Snap> meant_; // under the pointer
};

} // namespace fenmark::desk
