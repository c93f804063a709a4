// The embedded host: open documents, the current drawing, settings, and what it reports after an import.
//
// It implements the declared host surface (namespace mirdane) for the process: the host that was made last and still
// lives answers. All operations run on one thread, as the command does.
#pragma once

#include "host/embedded/drawing_names.h"
#include "host/embedded/layout_notes.h"
#include "host/surface/automation.h"
#include "host/surface/database.h"
#include "host/surface/map.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace fenmark::host::embedded {

// One open drawing.
class Document : public mirdane::MdApDocument {
  public:
    Document();
    ~Document() override;
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    Drawing& drawing() { return drawing_; }
    const Drawing& drawing() const { return drawing_; }
    DrawingStore& store() { return store_; }
    // What the surface returns for this drawing; lives as long as the document.
    class DatabaseObjects;
    class MapObjects;
    DatabaseObjects& databaseObjects() { return *databaseObjects_; }
    MapObjects& mapObjects() { return *mapObjects_; }

  private:
    Drawing drawing_;
    DrawingStore store_;
    std::unique_ptr<DatabaseObjects> databaseObjects_;
    std::unique_ptr<MapObjects> mapObjects_;
};

struct MessageBox {
    std::string text;
    std::string caption;
};

class EmbeddedHost {
  public:
    // The host starts with one new document, which is current.
    EmbeddedHost();
    ~EmbeddedHost();
    EmbeddedHost(const EmbeddedHost&) = delete;
    EmbeddedHost& operator=(const EmbeddedHost&) = delete;

    // The host that answers the surface; null if there is none.
    static EmbeddedHost* current();

    Document& newDocument(); // becomes current
    void makeCurrent(Document& document);
    void closeDocument(Document& document); // notifies the reactors; the first of the others becomes current
    Document* currentDocument() const { return currentDocument_; }
    const std::vector<std::unique_ptr<Document>>& documents() const { return documents_; }
    bool owns(const Document* document) const;
    // Drawing of the current document.
    Drawing& drawing() { return currentDocument_->drawing(); }

    void setPositiveRadius(PositiveRadius sense) { positiveRadius_ = sense; }
    PositiveRadius positiveRadius() const { return positiveRadius_; }

    // Clothoids get their PI in plan, also where the route's points differ in height. The output does that; the host
    // keeps the setting for whoever runs a command, and for its notes.
    void setPlanTangents(bool inPlan) { planTangents_ = inPlan; }
    bool planTangents() const { return planTangents_; }

    // The alignment whose elements were laid and whose turning senses are not decided yet; null for none.
    bool isUnsettled(MdDbObjectId alignment) const { return unsettled_.isValid() && unsettled_ == alignment; }
    void noteUnsettled(MdDbObjectId alignment) { unsettled_ = alignment; }

    // About the alignments that were made in the current drawing since clearNotes, and are still there.
    LayoutNotes layoutNotes() const;
    void clearNotes();
    // The points of the route that an alignment was made of, so that the notes report one that lies off them.
    void noteRoute(MdDbObjectId alignment, std::span<const MdGePoint3d> points);
    // The host fills in the alignment's name and length when it reports it.
    void noteRefused(MdDbObjectId alignment, const RefusedElement& element);

    // Message boxes are kept, and passed on to a handler if there is one.
    void onMessageBox(std::function<void(const MessageBox&)> handler) { messageHandler_ = std::move(handler); }
    void showMessageBox(std::string_view text, std::string_view caption);
    std::vector<MessageBox>& messageBoxes() { return messageBoxes_; }

    void setMainWindow(void* window) { mainWindow_ = window; }
    void* mainWindow() const { return mainWindow_; }

    // References to automation objects that somebody still holds; 0 after every command.
    static std::int64_t liveAutomationReferences();
    // Open database objects, and blocks of the host's heap that were not freed; 0 after every command.
    static std::int64_t liveDatabaseObjects();

    mirdane::MdApDocManager& documentManager();
    mirdane::AutomationObject& application();

  private:
    class DocumentManager;

    std::vector<std::unique_ptr<Document>> documents_;
    Document* currentDocument_ = nullptr;
    std::unique_ptr<DocumentManager> documentManager_;
    mirdane::AutomationObject* application_ = nullptr; // holds one reference of the host's own
    PositiveRadius positiveRadius_ = PositiveRadius::Auto;
    bool planTangents_ = false;
    MdDbObjectId unsettled_;
    std::vector<std::pair<MdDbObjectId, RefusedElement>> refused_;
    std::vector<std::pair<MdDbObjectId, Misfit>> misfits_;
    std::uint64_t notesFrom_ = 0; // alignments beyond this identifier are reported
    std::function<void(const MessageBox&)> messageHandler_;
    std::vector<MessageBox> messageBoxes_;
    void* mainWindow_ = nullptr;
    EmbeddedHost* before_ = nullptr;
};

} // namespace fenmark::host::embedded
