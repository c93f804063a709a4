// The plan of a drawing as a widget.
#include "desk/plan/plan_view.h"

#include "desk/plan/plan_furniture.h"

#include <QApplication>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace fenmark::desk {

using drawing::Extent;

namespace {

constexpr double kMarkReach = 12.0; // pixels that the mark of an object reaches beyond it
constexpr int kRest = 120;          // milliseconds without a movement, after which the names of many objects are placed

} // namespace

PlanView::PlanView(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setObjectName(QStringLiteral("plan"));
    rest_.setSingleShot(true);
    rest_.setInterval(kRest);
    connect(&rest_, &QTimer::timeout, this, &PlanView::placeNames);
    updateCursor();
}

void PlanView::setDrawing(const drawing::Drawing* drawing) {
    painter_.reset();
    drawing_ = drawing;
    look_.hiddenLayers.clear();
    const bool had = selected_.has_value();
    selected_.reset();
    selection_.clear();
    hovered_.reset();
    lastClick_.reset();
    if (drawing_ != nullptr) {
        painter_.emplace(*drawing_, index_);
        painter_->setUnderlay(underlay_);
    }
    fitPending_ = true;
    drawingChanged();
    if (had) {
        emit selectionChanged();
    }
}

void PlanView::drawingChanged() {
    const bool wasEmpty = index_.extent().empty();
    index_ = drawing_ != nullptr ? PlanIndex(*drawing_) : PlanIndex();
    if (wasEmpty) {
        fitPending_ = true;
    }
    lastClick_.reset();
    hovered_.reset();
    dirty_ = true;
    names_ = QImage();
    dropWhatIsGone();
    if (fitPending_) {
        fitAll();
    }
    update();
}

void PlanView::setFrozen(bool frozen) {
    frozen_ = frozen;
    hovered_.reset();
    drag_ = Drag::None;
    if (!frozen) {
        update();
    }
}

void PlanView::setLook(const PlanLook& look) {
    look_ = look;
    hovered_.reset();
    dirty_ = true;
    names_ = QImage();
    if (ready()) {
        dropWhatIsGone();
    }
    update();
}

// What the drawing holds no more, or what is hidden, is not selected.
void PlanView::dropWhatIsGone() {
    const auto gone = [&](const PlanObject& object) {
        return drawing_ == nullptr || !exists(*drawing_, object) || desk::isHidden(look_, *drawing_, object);
    };
    if (std::erase_if(selection_, gone) == 0) {
        return;
    }
    if (selected_ && gone(*selected_)) {
        selected_ = selection_.empty() ? std::nullopt : std::optional(selection_.front());
    }
    emit selectionChanged();
}

void PlanView::selectSeveral(std::vector<PlanObject> objects) {
    if (!ready()) {
        return;
    }
    std::erase_if(objects, [&](const PlanObject& object) { return !exists(*drawing_, object); });
    if (objects == selection_) {
        return;
    }
    selection_ = std::move(objects);
    selected_ = selection_.empty() ? std::nullopt : std::optional(selection_.front());
    update();
    emit selectionChanged();
}

void PlanView::toggle(const PlanObject& object) {
    std::vector<PlanObject> objects = selection_;
    if (std::erase(objects, object) == 0) {
        objects.insert(objects.begin(), object);
    }
    selectSeveral(std::move(objects));
}

void PlanView::selectAllShown() {
    if (ready()) {
        selectSeveral(objectsInBox(*drawing_, index_, look_, index_.extent(), true));
    }
}

void PlanView::lookAt(const PlanObject& object) {
    if (ready() && exists(*drawing_, object)) {
        bringIntoView(object);
        setHovered(object);
    }
}

// From left to right what lies wholly in the box, from right to left also what reaches into it.
void PlanView::selectBox(const QPointF& from, const QPointF& to) {
    Extent box;
    box.add(view_.toX(from.x()), view_.toY(from.y()));
    box.add(view_.toX(to.x()), view_.toY(to.y()));
    std::vector<PlanObject> objects = selection_;
    for (const PlanObject& object : objectsInBox(*drawing_, index_, look_, box, from.x() <= to.x())) {
        if (std::find(selection_.begin(), selection_.end(), object) == selection_.end()) {
            objects.push_back(object);
        }
    }
    selectSeveral(std::move(objects));
}

void PlanView::select(const std::optional<PlanObject>& object, bool intoView) {
    if (!ready()) {
        return;
    }
    const std::optional<PlanObject> wanted = object && exists(*drawing_, *object) ? object : std::nullopt;
    if (intoView && wanted) {
        bringIntoView(*wanted);
    }
    if (wanted == selected_ && selection_.size() <= 1) {
        return;
    }
    selected_ = wanted;
    selection_.clear();
    if (wanted) {
        selection_.push_back(*wanted);
    }
    update();
    emit selectionChanged();
}

void PlanView::setTool(PlanTool* tool) {
    tool_ = tool;
    setHovered(std::nullopt);
    update();
}

void PlanView::setUnderlay(PlanPainter::Underlay underlay) {
    underlay_ = std::move(underlay);
    if (painter_) {
        painter_->setUnderlay(underlay_);
    }
    dirty_ = true;
    update();
}

void PlanView::setHint(const QString& large, const QString& small) {
    hintLarge_ = large;
    hintSmall_ = small;
    update();
}

std::size_t PlanView::render() {
    if (!painter_ || frozen_) {
        return 0;
    }
    if (dirty_ || picture_.isNull()) {
        painter_->paint(picture_, view_, look_, devicePixelRatioF(), font());
        dirty_ = false;
        if (painter_->leftManyNames()) {
            rest_.start();
        } else {
            rest_.stop();
            names_ = QImage();
        }
    }
    return painter_->drawn();
}

void PlanView::placeNames() {
    render();
    rest_.stop();
    if (ready() && painter_ && painter_->leftManyNames()) {
        names_ = painter_->paintManyNames(view_, devicePixelRatioF(), font());
        namesView_ = view_;
        update();
    }
}

// Those placed last, where a pan brought them.
void PlanView::paintNames(QPainter& painter) {
    if (names_.isNull() || namesView_.size() != view_.size() || namesView_.pixelsPerMetre() != view_.pixelsPerMetre()) {
        return;
    }
    painter.drawImage(view_.toPixel(namesView_.toX(0.0), namesView_.toY(0.0)), names_);
}

void PlanView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    render();
    if (picture_.isNull()) {
        painter.fillRect(rect(), palette().base());
    } else {
        painter.drawImage(QPointF(0, 0), picture_);
        paintNames(painter);
    }
    if (!ready()) {
        return;
    }
    if (hovered_ && hovered_ != selected_) {
        painter.save();
        painter_->paintHovered(painter, view_, *hovered_);
        painter.restore();
    }
    const Extent seen = view_.visible(kMarkReach);
    for (const PlanObject& object : selection_) {
        const Extent box = extentOf(*drawing_, object);
        if (box.minX <= seen.maxX && box.maxX >= seen.minX && box.minY <= seen.maxY && box.maxY >= seen.minY) {
            painter.save();
            painter_->paintSelected(painter, view_, object);
            painter.restore();
        }
    }
    if (tool_ != nullptr) {
        painter.save();
        tool_->paint(painter, view_, font());
        painter.restore();
    }
    paintFurniture(painter, view_, font());
    if (index_.extent().empty()) {
        paintHint(painter, rect(), hintLarge_, hintSmall_, font());
    }
    QStringList leftOut;
    if (linesLeftOut() > 0 && !linesLeftOutText_.isEmpty()) {
        leftOut << linesLeftOutText_.arg(linesLeftOut());
    }
    if (namesLeftOut() > 0 && !namesLeftOutText_.isEmpty()) {
        leftOut << namesLeftOutText_.arg(namesLeftOut());
    }
    if (!leftOut.isEmpty()) {
        paintNote(painter, rect(), leftOut.join(QStringLiteral("   ")), font());
    }
    if (drag_ == Drag::Window || drag_ == Drag::Select) {
        paintZoomWindow(painter, QRectF(dragFrom_, dragLast_).normalized());
    }
    if (hasFocus()) {
        paintFocus(painter, rect(), palette().color(QPalette::Highlight));
    }
}

void PlanView::resizeEvent(QResizeEvent*) {
    view_.setSize(size());
    hovered_.reset();
    dirty_ = true;
    if (fitPending_ && ready()) {
        fitAll();
    }
    emit viewChanged();
}

void PlanView::viewMoved() {
    hovered_.reset(); // found again when the pointer moves next
    dirty_ = true;
    update();
    emit viewChanged();
}

// The object with its mark, as far as it is in the window.
QRect PlanView::pixelsAround(const PlanObject& object) const {
    const Extent extent = extentOf(*drawing_, object);
    const QRectF window = QRectF(rect());
    const QRectF around = QRectF(view_.toPixel(extent.minX, extent.maxY), view_.toPixel(extent.maxX, extent.minY))
                              .adjusted(-kMarkReach, -kMarkReach, kMarkReach, kMarkReach);
    return around.intersected(window).toAlignedRect();
}

// Only what the two marks cover is painted again, from the picture that is there.
void PlanView::setHovered(const std::optional<PlanObject>& object) {
    if (object == hovered_) {
        return;
    }
    if (hovered_) {
        update(pixelsAround(*hovered_));
    }
    hovered_ = object;
    if (hovered_) {
        update(pixelsAround(*hovered_));
    }
}

void PlanView::fitAll() {
    view_.setSize(size());
    view_.fit(index_.extent());
    fitPending_ = !isVisible() || index_.extent().empty();
    viewMoved();
}

void PlanView::fitSelected() {
    if (!ready() || !selected_) {
        return;
    }
    view_.fit(extentOf(*drawing_, *selected_));
    viewMoved();
}

bool PlanView::bringIntoView(const PlanObject& object) {
    const Extent box = extentOf(*drawing_, object);
    const Extent seen = view_.visible(-20.0);
    if (box.empty() ||
        (box.minX >= seen.minX && box.maxX <= seen.maxX && box.minY >= seen.minY && box.maxY <= seen.maxY)) {
        return false;
    }
    if (box.maxX - box.minX > seen.maxX - seen.minX || box.maxY - box.minY > seen.maxY - seen.minY) {
        view_.fit(box);
    } else {
        view_.centreOn(0.5 * (box.minX + box.maxX), 0.5 * (box.minY + box.maxY));
    }
    viewMoved();
    return true;
}

void PlanView::startZoomWindow() {
    windowArmed_ = true;
    updateCursor();
}

void PlanView::panPixels(double dx, double dy) {
    view_.panPixels(dx, dy);
    viewMoved();
}

void PlanView::zoomAt(const QPointF& pixel, double factor) {
    view_.zoomAt(pixel, factor);
    viewMoved();
}

void PlanView::zoomMiddle(double factor) {
    zoomAt(QPointF(width() / 2.0, height() / 2.0), factor);
}

bool PlanView::stepSelection(int step, bool around) {
    if (!ready()) {
        return false;
    }
    const std::vector<PlanObject> objects = objectsInView(*drawing_, index_, view_, look_);
    if (objects.empty()) {
        return false;
    }
    const auto at = selected_ ? std::find(objects.begin(), objects.end(), *selected_) : objects.end();
    const auto count = static_cast<std::ptrdiff_t>(objects.size());
    std::ptrdiff_t next = step > 0 ? 0 : count - 1;
    if (at != objects.end()) {
        next = (at - objects.begin()) + step;
    }
    if (next < 0 || next >= count) {
        if (!around) {
            return false;
        }
        next = (next + count) % count;
    }
    select(objects[static_cast<std::size_t>(next)]);
    return true;
}

void PlanView::selectNext(int step) {
    stepSelection(step, true);
}

} // namespace fenmark::desk
