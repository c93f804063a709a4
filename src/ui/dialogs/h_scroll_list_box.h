// A list box that keeps its horizontal extent fitted to its longest line.
#pragma once

#include <QListWidget>
#include <QStringList>

namespace fenmark::ui {

class CHScrollListBox : public QListWidget {
    Q_OBJECT

  public:
    explicit CHScrollListBox(QWidget* parent = nullptr);

    // Index of the new line, -1 if it could not be added (an index outside the list). A line wider than the extent
    // widens it.
    int addLine(const QString& text);
    int insertLine(int index, const QString& text);
    // Lines left, -1 for an index outside the list. All lines are measured anew, under a wait cursor.
    int deleteLine(int index);
    // Adds the names of the files that match the pattern (a folder's path with a file pattern behind it).
    int addDirectory(const QString& pattern);
    void resetContent();

    int horizontalExtent() const { return extent_; } // pixels
    void setExpandsTabs(bool expands) { expandsTabs_ = expands; }
    QStringList lines() const;

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    int lineWidth(const QString& text) const;
    void measureAll();
    void setExtent(int extent);

    int extent_ = 0;
    bool expandsTabs_ = false;
};

} // namespace fenmark::ui
