// The longitudinal section and the cross-sections of an alignment, drawn beside the plan.
//
// Both follow the selection, and what is clicked in them is selected in the plan. The wheel and + and - zoom along the
// section, a drag and the arrow keys move it, F shows all of it.
#pragma once

#include "desk/language/work_texts.h"
#include "desk/plan/plan_index.h"
#include "desk/plan/plan_object.h"
#include "desk/sections/section_model.h"

#include <QPainter>
#include <QPointF>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <cstddef>
#include <optional>
#include <vector>

namespace fenmark::desk {

// What both sections have: a frame of heights over lengths that zooms and moves.
class SectionView : public QWidget {
    Q_OBJECT

  public:
    SectionView(SectionModel& model, const Texts& texts, QWidget* parent = nullptr);

    // 0 for as high as fits.
    void setExaggeration(double times);
    [[nodiscard]] double exaggeration() const { return exaggeration_; }
    [[nodiscard]] const SectionFrame& frame() const { return frame_; }
    [[nodiscard]] std::optional<std::size_t> alignment() const { return alignment_; }
    [[nodiscard]] const QString& pointed() const { return pointed_; }
    void fitAll();

    QSize sizeHint() const override { return {600, 220}; }
    QSize minimumSizeHint() const override { return {160, 120}; }

  signals:
    // A place of the drawing was clicked: a result of that kind and height, if there is one, or an element.
    void placeChosen(qulonglong alignment, double station, double offset, double height);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void leaveEvent(QEvent* event) override;

    [[nodiscard]] virtual bool isEmpty() const = 0;
    [[nodiscard]] virtual WorkText emptyText() const = 0;
    // What lies along the section: from, to, lowest and highest.
    struct Range {
        double from = 0.0;
        double to = 0.0;
        double low = 0.0;
        double high = 0.0;
    };
    [[nodiscard]] virtual Range range() const = 0;
    [[nodiscard]] virtual int bandRows() const = 0;
    [[nodiscard]] virtual double bandRowHeight(int row) const;
    virtual void paintSection(QPainter& painter) = 0;
    // The result nearest to the pixel along the section; nothing if there is none.
    [[nodiscard]] virtual std::optional<std::size_t> nearest(const QPointF& pixel) const = 0;
    [[nodiscard]] virtual QString describe(std::size_t result) const = 0;
    virtual void choose(std::size_t result) = 0;
    [[nodiscard]] virtual QPointF pixelOf(std::size_t result) const = 0;
    virtual void step(int by) = 0; // to the next or previous section or result

    // Colours that read on the palette's base, dark or light.
    struct Inks {
        QColor paper;
        QColor ink;
        QColor faint;
        QColor ground;
        QColor planned;
        QColor curve;
        QColor marked;
    };
    [[nodiscard]] Inks inks() const;
    void paintHeights(QPainter& painter, const Inks& inks) const;
    // Text that runs upward from the foot.
    static void paintUpright(QPainter& painter, const QPointF& foot, const QString& text);
    void layOut(bool keepPlace);

    SectionModel& model_;
    const Texts& texts_;
    SectionFrame frame_;
    std::optional<std::size_t> alignment_;

  private:
    double exaggeration_ = 0.0;
    bool fitted_ = true; // all of it is shown, also when the size changes
    std::optional<QPointF> pressed_;
    QPointF last_;
    bool dragged_ = false;
    std::optional<std::size_t> hovered_;
    QString pointed_;
};

class ProfileView : public SectionView {
    Q_OBJECT

  public:
    using SectionView::SectionView;

    void show(std::optional<std::size_t> alignment, const std::optional<PlanObject>& selected);
    [[nodiscard]] const std::vector<exchange::LongitudinalPoint>& ground() const { return ground_; }
    [[nodiscard]] std::optional<double> markedStation() const { return station_; }

  protected:
    [[nodiscard]] bool isEmpty() const override { return ground_.size() < 2; }
    [[nodiscard]] WorkText emptyText() const override;
    [[nodiscard]] Range range() const override;
    [[nodiscard]] int bandRows() const override;
    [[nodiscard]] double bandRowHeight(int row) const override;
    void paintSection(QPainter& painter) override;
    [[nodiscard]] std::optional<std::size_t> nearest(const QPointF& pixel) const override;
    [[nodiscard]] QString describe(std::size_t result) const override;
    void choose(std::size_t result) override;
    [[nodiscard]] QPointF pixelOf(std::size_t result) const override;
    void step(int by) override;

  private:
    void paintBand(QPainter& painter, const Inks& inks);
    void paintCurves(QPainter& painter, const Inks& inks, double top, double height);

    std::vector<exchange::LongitudinalPoint> ground_;
    std::vector<exchange::LongitudinalPoint> planned_;
    std::optional<double> station_; // of what is selected
    std::optional<std::size_t> element_;
};

class CrossSectionView : public SectionView {
    Q_OBJECT

  public:
    using SectionView::SectionView;

    void show(std::optional<std::size_t> alignment, const std::optional<PlanObject>& selected);
    [[nodiscard]] std::size_t count() const;
    [[nodiscard]] std::size_t current() const { return current_; }
    void showSection(std::size_t index);
    [[nodiscard]] QString title() const; // of the current one
    [[nodiscard]] QStringList names() const;

  signals:
    void sectionShown();

  protected:
    [[nodiscard]] bool isEmpty() const override { return section() == nullptr; }
    [[nodiscard]] WorkText emptyText() const override;
    [[nodiscard]] Range range() const override;
    [[nodiscard]] int bandRows() const override { return 2; }
    void paintSection(QPainter& painter) override;
    [[nodiscard]] std::optional<std::size_t> nearest(const QPointF& pixel) const override;
    [[nodiscard]] QString describe(std::size_t result) const override;
    void choose(std::size_t result) override;
    [[nodiscard]] QPointF pixelOf(std::size_t result) const override;
    void step(int by) override;

  private:
    [[nodiscard]] const exchange::CrossSection* section() const;

    std::size_t current_ = 0;
    std::optional<PlanObject> selected_;
};

} // namespace fenmark::desk
