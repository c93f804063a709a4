// Copies of what was not saved, for the next run after a crash.
#pragma once

#include "desk/session/desk_session.h"

#include <QDateTime>
#include <QLockFile>
#include <QObject>
#include <QString>
#include <QTimer>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace fenmark::desk {

// A drawing that a run left behind without saving it.
struct LeftDrawing {
    QString path; // of the copy
    QString name; // the drawing's own file; empty for one that had none
    QDateTime time;
    // Something that is no lock stands in its lock's place: whether its run is at work is not known, and it is not to be
    // touched. Empty for all others.
    QString oddLock;
};

// Each run keeps its copy under a name of its own, with a lock beside it that goes with the run. A copy whose lock is
// free belongs to a run that ended without forgetting it.
class Recovery : public QObject {
    Q_OBJECT

  public:
    explicit Recovery(QObject* parent = nullptr) : QObject(parent) {}
    ~Recovery() override;

    // Keeps a copy every so often while there is something to lose. Nothing is kept if not asked to. Where the folder
    // cannot be used yet, that is told, and tried again with each copy.
    void start(DeskSession& session, bool keep);
    // In another folder than the user's own; before start.
    void setFolder(const QString& folder) { folder_ = folder; }

    // Asked for the texts that belong to the drawing and are none of the session's.
    void onKeep(std::function<drawing::TextChanges()> texts) { texts_ = std::move(texts); }

    // Told once of copies that cannot be written, and again when one could be written in between.
    void onFailure(std::function<void(const Outcome& why)> handler) { failureHandler_ = std::move(handler); }

    // Writes the copy now, if there is something to lose; false if it cannot be written.
    bool keepNow();
    // The drawing is saved or given up: the copy goes.
    void forget();

    // What earlier runs left, the latest first.
    std::vector<LeftDrawing> left() const;
    void remove(const LeftDrawing& left) const;

  private:
    QString stem() const;   // of the run's own files
    void clearAway() const; // what runs that were killed before they had kept a copy left
    Outcome takeLock();
    void tellOnce(const Outcome& failure);
    Outcome writeCopy(const std::string& copy, const drawing::DrawingTexts& texts) const;

    DeskSession* session_ = nullptr;
    QString folder_;
    QTimer timer_;
    std::unique_ptr<QLockFile> lock_;
    std::uint64_t keptState_ = 0;
    bool kept_ = false;
    drawing::DrawingTexts keptTexts_;
    std::function<drawing::TextChanges()> texts_;
    bool toldOfFailure_ = false;
    std::function<void(const Outcome&)> failureHandler_;
};

} // namespace fenmark::desk
