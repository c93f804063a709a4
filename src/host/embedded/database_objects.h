// The drawing database of one document, as the declared surface shows it.
#pragma once

#include "host/embedded/embedded_host.h"

namespace fenmark::host::embedded {

// Tables and the model space are one object each, for as long as the document lives; opening counts, closing counts
// back.
class Document::DatabaseObjects : public mirdane::MdDbDatabase {
  public:
    explicit DatabaseObjects(Document& document);
    ~DatabaseObjects() override;

    mirdane::Status getSymbolTable(mirdane::MdDbBlockTable*& table, mirdane::OpenMode mode) override;
    mirdane::Status getSymbolTable(mirdane::MdDbLayerTable*& table, mirdane::OpenMode mode) override;
    MdDbObjectId clayer() const override;

    mirdane::MdDbBlockTableRecord* openModelSpace(MdDbObjectId id);

  private:
    class BlockTable;
    class ModelSpace;
    class LayerTable;

    Document& document_;
    std::unique_ptr<BlockTable> blockTable_;
    std::unique_ptr<ModelSpace> modelSpace_;
    std::unique_ptr<LayerTable> layerTable_;
};

} // namespace fenmark::host::embedded
