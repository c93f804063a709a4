// The declared host surface, drawing database: exactly the operations that the module needs, under the host's names.
//
// Whoever brings a host implements what is declared here; the embedded host does so for real. Text is UTF-8. A status
// of 0 is success. An object that was opened is closed before the operation that opened it returns.
#pragma once

#include "values/drawing_values.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// The module meets these symbols at run time in the host that loads it.
#pragma GCC visibility push(default)

namespace mirdane {

using fenmark::host::MdDbObjectId;
using fenmark::host::MdGePoint3d;

using Status = int; // 0 success

enum class OpenMode : int { Read = 0, Write = 1 };

// The host's own string, filled by MdDbSymbolTableRecord::getName.
class MdString {
  public:
    MdString() = default;
    explicit MdString(std::string text) : text_(std::move(text)) {}
    const char* c_str() const { return text_.c_str(); }
    void assign(std::string_view text) { text_.assign(text); }

  private:
    std::string text_;
};

// Every object of the drawing. Objects are allocated on the host's heap (mdHeapAlloc) and deleted by the host alone.
class MdDbObject {
  public:
    virtual ~MdDbObject() = default;
    // Ends the open state and commits the object. The pointer is dead afterwards.
    virtual Status close() = 0;
};

class MdDbSymbolTableRecord : public MdDbObject {
  public:
    virtual Status getName(MdString& name) const = 0;
};

class MdDbEntity;

class MdDbBlockTableRecord : public MdDbSymbolTableRecord {
  public:
    // Adds a new entity, which stays open for the caller to close, and gives its identifier.
    virtual Status appendMdDbEntity(MdDbObjectId& id, MdDbEntity* entity) = 0;
};

class MdDbLayerTableRecord : public MdDbSymbolTableRecord {};

class MdDbSymbolTable : public MdDbObject {
  public:
    virtual Status getIdAt(std::string_view name, MdDbObjectId& id, bool getErased) const = 0;
};

class MdDbBlockTable : public MdDbSymbolTable {};

class MdDbSymbolTableIterator {
  public:
    virtual ~MdDbSymbolTableIterator() = default;
    virtual void start(bool atBeginning, bool skipDeleted) = 0;
    virtual void step(bool forward, bool skipDeleted) = 0;
    virtual bool done() const = 0;
    virtual Status getRecordId(MdDbObjectId& id) const = 0;
};

// Deleted by the caller with the ordinary delete.
class MdDbLayerTableIterator : public MdDbSymbolTableIterator {};

class MdDbLayerTable : public MdDbSymbolTable {
  public:
    virtual Status newIterator(MdDbLayerTableIterator*& iterator, bool atBeginning, bool skipDeleted) const = 0;
};

class MdDbDatabase {
  public:
    virtual ~MdDbDatabase() = default;
    virtual Status getSymbolTable(MdDbBlockTable*& table, OpenMode mode) = 0;
    virtual Status getSymbolTable(MdDbLayerTable*& table, OpenMode mode) = 0;
    virtual MdDbObjectId clayer() const = 0; // the current layer's record
};

class MdDbHostApplicationServices {
  public:
    virtual ~MdDbHostApplicationServices() = default;
    virtual MdDbDatabase* workingDatabase() const = 0; // of the current document
};

// Entities are built by the caller and passed to the host. What they hold is their own; close is the host's.
class MdDbEntity : public MdDbObject {
  public:
    Status close() override; // implemented by the host
    virtual Status setLayerOfEntity(std::string_view layerName, bool doSubentities, bool allowHidden); // by the host

    const std::string& layer() const { return layer_; }
    MdDbObjectId objectId() const { return id_; }
    // For the host alone: the identifier that the entity got, or under which it was opened.
    void setObjectId(MdDbObjectId id) { id_ = id; }
    void setLayerText(std::string_view layer) { layer_.assign(layer); }

  private:
    MdDbObjectId id_;
    std::string layer_;
};

class MdDbPoint : public MdDbEntity {
  public:
    explicit MdDbPoint(const MdGePoint3d& position) : position_(position) {}
    const MdGePoint3d& position() const { return position_; }

  private:
    MdGePoint3d position_;
};

enum class Poly2dType : int { Simple = 0 };

class MdDb2dPolyline : public MdDbEntity {
  public:
    MdDb2dPolyline(Poly2dType type, const std::vector<MdGePoint3d>& vertices, double elevation, bool closed,
                   double startWidth, double endWidth, const std::vector<double>* bulges,
                   const std::vector<MdDbObjectId>* vertexIds)
        : type_(type), vertices_(vertices), elevation_(elevation), closed_(closed), startWidth_(startWidth),
          endWidth_(endWidth), hasBulges_(bulges != nullptr), hasVertexIds_(vertexIds != nullptr) {}

    Poly2dType type() const { return type_; }
    const std::vector<MdGePoint3d>& vertices() const { return vertices_; }
    double elevation() const { return elevation_; }
    bool closed() const { return closed_; }
    double startWidth() const { return startWidth_; }
    double endWidth() const { return endWidth_; }
    bool hasBulges() const { return hasBulges_; }
    bool hasVertexIds() const { return hasVertexIds_; }
    // For the host alone.
    std::vector<MdGePoint3d>& verticesForHost() { return vertices_; }

  private:
    Poly2dType type_;
    std::vector<MdGePoint3d> vertices_;
    double elevation_;
    bool closed_;
    double startWidth_;
    double endWidth_;
    bool hasBulges_;
    bool hasVertexIds_;
};

// A lightweight polyline.
class MdDbPolyline : public MdDbEntity {
  public:
    MdDbPolyline() = default;
    // Takes over the geometry and, with the flag, the identifier of an open 2D polyline, which the host closes and
    // replaces; the pointer is null afterwards. Implemented by the host.
    virtual Status convertFromEntity(MdDbEntity*& entity, bool transferIdentity);
    virtual Status setClosedFlag(bool closed); // by the host

    const std::vector<MdGePoint3d>& vertices() const { return vertices_; }
    bool closed() const { return closed_; }
    // For the host alone.
    std::vector<MdGePoint3d>& verticesForHost() { return vertices_; }
    void setClosedForHost(bool closed) { closed_ = closed; }

  private:
    std::vector<MdGePoint3d> vertices_;
    bool closed_ = false;
};

MdDbHostApplicationServices* mddbHostApplicationServices();

// Opens an object as the given class: 0 on success, otherwise the pointer is left null.
Status mddbOpenObject(MdDbBlockTableRecord*& object, MdDbObjectId id, OpenMode mode, bool openErased);
Status mddbOpenObject(MdDbLayerTableRecord*& object, MdDbObjectId id, OpenMode mode, bool openErased);
Status mddbOpenObject(MdDbPolyline*& object, MdDbObjectId id, OpenMode mode, bool openErased);
Status mddbOpenObject(MdDbEntity*& object, MdDbObjectId id, OpenMode mode, bool openErased);

// Copies a string into a new allocation on the host's heap, freed with mdHeapFree. 0 on success.
Status mdutNewString(const char* source, char*& destination);

// The host's heap. The first argument is always null: the default heap.
void* mdHeapAlloc(void* heap, std::size_t size);
void mdHeapFree(void* heap, void* pointer);

class MdApDocument {
  public:
    virtual ~MdApDocument() = default;
};

class MdApDocManagerReactor {
  public:
    virtual ~MdApDocManagerReactor() = default;
    virtual void documentToBeDestroyed(MdApDocument* document) = 0;
};

class MdApDocManager {
  public:
    virtual ~MdApDocManager() = default;
    virtual MdApDocument* curDocument() const = 0;
    virtual void addReactor(MdApDocManagerReactor* reactor) = 0;
    virtual void removeReactor(MdApDocManagerReactor* reactor) = 0;
};

// Null once the host has destroyed its document manager.
MdApDocManager* mdDocManagerPtr();

// The host's main window, parent of the dialogs: a QWidget* where the host has windows, otherwise null.
void* mdsw_mirdanMainWnd();

} // namespace mirdane

#pragma GCC visibility pop
