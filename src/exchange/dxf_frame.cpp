// What stands around the entities of a DXF file.
#include "exchange/dxf_frame.h"

#include <algorithm>

namespace fenmark::exchange {

namespace {

constexpr int kMetres = 6;             // $INSUNITS
constexpr int kCrosses = 2;            // $PDMODE
constexpr double kViewRatio = 1.6;     // width of the first view to its height
constexpr double kViewMargin = 1.1;    // of the first view beyond the extent
constexpr double kSmallestView = 10.0; // metres
constexpr const char* kFontFile = "msgothic.ttc";
constexpr const char* kFontName = "MS Gothic";
constexpr int kFontFlags = 0x8031;           // character set 128 (Japanese), fixed pitch, modern family
constexpr std::uint64_t kFrameHandles = 256; // that tables, blocks and objects take at most, layers not counted

const char* versionName(DxfVersion version) {
    switch (version) {
    case DxfVersion::R12:
        return "AC1009";
    case DxfVersion::R2000:
        return "AC1015";
    case DxfVersion::R2018:
        break;
    }
    return "AC1032";
}

void writeHeader(DxfWriter& writer, const DxfContents& contents) {
    writer.beginSection("HEADER");
    writer.group(9, "$ACADVER"); // before the code page: some readers take that for another release's otherwise
    writer.group(1, versionName(writer.version()));
    writer.group(9, "$DWGCODEPAGE");
    writer.group(3, "ANSI_932");
    writer.group(9, "$INSBASE");
    writer.point(10, 0.0, 0.0, 0.0);
    if (!contents.extent.empty() && contents.wholeExtent) {
        writer.group(9, "$EXTMIN");
        writer.point(10, contents.extent.minX, contents.extent.minY, 0.0);
        writer.group(9, "$EXTMAX");
        writer.point(10, contents.extent.maxX, contents.extent.maxY, 0.0);
    }
    writer.group(9, "$TEXTSIZE");
    writer.real(40, contents.textHeight);
    writer.group(9, "$TEXTSTYLE");
    writer.group(7, kDxfTextStyle);
    writer.group(9, "$CLAYER");
    writer.group(8, "0");
    writer.group(9, "$PDMODE"); // points show as crosses
    writer.integer(70, kCrosses);
    writer.group(9, "$PDSIZE");
    writer.real(40, contents.textHeight);
    if (!writer.isOld()) {
        writer.group(9, "$MEASUREMENT");
        writer.integer(70, 1);
        writer.group(9, "$INSUNITS");
        writer.integer(70, kMetres);
        writer.group(9, "$HANDSEED");
        writer.handle(5, writer.lastHandle() + kFrameHandles + contents.layers.size() + contents.handles);
    }
    writer.endSection();
}

void writeView(DxfWriter& writer, const DxfContents& contents) {
    const drawing::Extent& extent = contents.extent;
    double x = 0.0;
    double y = 0.0;
    double height = kSmallestView;
    if (!extent.empty()) {
        x = extent.minX + 0.5 * (extent.maxX - extent.minX);
        y = extent.minY + 0.5 * (extent.maxY - extent.minY);
        height = std::max({(extent.maxY - extent.minY) * kViewMargin,
                           (extent.maxX - extent.minX) * kViewMargin / kViewRatio, kSmallestView});
    }
    writer.beginTable("VPORT", 1);
    writer.record("VPORT", "AcDbViewportTableRecord", "*ACTIVE");
    writer.point(10, 0.0, 0.0);
    writer.point(11, 1.0, 1.0);
    writer.point(12, x, y);
    writer.point(13, 0.0, 0.0);
    writer.point(14, 10.0, 10.0);
    writer.point(15, 10.0, 10.0);
    writer.point(16, 0.0, 0.0, 1.0);
    writer.point(17, 0.0, 0.0, 0.0);
    writer.real(40, height);
    writer.real(41, kViewRatio);
    writer.real(42, 50.0);
    writer.real(43, 0.0);
    writer.real(44, 0.0);
    writer.real(50, 0.0);
    writer.real(51, 0.0);
    writer.integer(71, 0);
    writer.integer(72, 100);
    writer.integer(73, 1);
    writer.integer(74, 3);
    writer.integer(75, 0);
    writer.integer(76, 0);
    writer.integer(77, 0);
    writer.integer(78, 0);
    writer.endTable();
}

void writeLineType(DxfWriter& writer, std::string_view name, std::string_view description) {
    writer.record("LTYPE", "AcDbLinetypeTableRecord", name);
    writer.group(3, description);
    writer.integer(72, 65);
    writer.integer(73, 0);
    writer.real(40, 0.0);
}

void writeLineTypes(DxfWriter& writer) {
    writer.beginTable("LTYPE", writer.isOld() ? 1 : 3);
    if (!writer.isOld()) {
        writeLineType(writer, "ByBlock", "");
        writeLineType(writer, "ByLayer", "");
    }
    writeLineType(writer, "Continuous", "Solid line");
    writer.endTable();
}

void writeLayers(DxfWriter& writer, const DxfContents& contents) {
    writer.beginTable("LAYER", static_cast<int>(contents.layers.size()));
    for (const auto& [name, colour] : contents.layers) {
        writer.record("LAYER", "AcDbLayerTableRecord", name);
        writer.integer(62, colour.index);
        if (colour.exact && writer.version() == DxfVersion::R2018) { // releases before 2004 know the index alone
            writer.integer(420, (colour.exact->red << 16) + (colour.exact->green << 8) + colour.exact->blue);
        }
        writer.group(6, "Continuous");
        if (!writer.isOld()) {
            writer.integer(370, -3); // the default line weight
        }
    }
    writer.endTable();
}

DxfWriter::Handle writeStyle(DxfWriter& writer, std::string_view name, std::string_view file, double lastHeight) {
    const DxfWriter::Handle handle = writer.record("STYLE", "AcDbTextStyleTableRecord", name);
    writer.real(40, 0.0); // the height is each text's own
    writer.real(41, 1.0);
    writer.real(50, 0.0);
    writer.integer(71, 0);
    writer.real(42, lastHeight);
    writer.group(3, file);
    writer.group(4, "");
    return handle;
}

// Returns the style of dimensions.
DxfWriter::Handle writeStyles(DxfWriter& writer, const DxfContents& contents) {
    writer.beginTable("STYLE", 2);
    const DxfWriter::Handle standard = writeStyle(writer, "Standard", "txt", contents.textHeight);
    writeStyle(writer, kDxfTextStyle, kFontFile, contents.textHeight);
    writer.group(1001, "ACAD");
    writer.group(1000, kFontName);
    writer.integer(1071, kFontFlags);
    writer.endTable();
    return standard;
}

void writeApplications(DxfWriter& writer) {
    writer.beginTable("APPID", 2);
    writer.record("APPID", "AcDbRegAppTableRecord", "ACAD");
    writer.record("APPID", "AcDbRegAppTableRecord", kDxfApplication);
    writer.endTable();
}

void writeTables(DxfWriter& writer, const DxfContents& contents) {
    writer.beginSection("TABLES");
    writeView(writer, contents);
    writeLineTypes(writer);
    writeLayers(writer, contents);
    const DxfWriter::Handle style = writeStyles(writer, contents);
    writer.beginTable("VIEW", 0);
    writer.endTable();
    writer.beginTable("UCS", 0);
    writer.endTable();
    writeApplications(writer);
    if (!writer.isOld()) {
        writer.beginTable("DIMSTYLE", 1);
        writer.record("DIMSTYLE", "AcDbDimStyleTableRecord", "Standard");
        writer.handle(340, style);
        writer.endTable();
        writer.beginTable("BLOCK_RECORD", 2);
        writer.record("BLOCK_RECORD", "AcDbBlockTableRecord", "*Model_Space", writer.owners().modelSpace);
        writer.handle(340, 0);
        writer.record("BLOCK_RECORD", "AcDbBlockTableRecord", "*Paper_Space", writer.owners().paperSpace);
        writer.handle(340, 0);
        writer.endTable();
    }
    writer.endSection();
}

void writeBlock(DxfWriter& writer, std::string_view name, DxfWriter::Handle record, bool paper) {
    const auto common = [&](std::string_view type) {
        writer.group(0, type);
        writer.handle(5, writer.newHandle());
        writer.handle(330, record);
        writer.group(100, "AcDbEntity");
        if (paper) {
            writer.integer(67, 1);
        }
        writer.group(8, "0");
    };
    common("BLOCK");
    writer.group(100, "AcDbBlockBegin");
    writer.group(2, name);
    writer.integer(70, 0);
    writer.point(10, 0.0, 0.0, 0.0);
    writer.group(3, name);
    writer.group(1, "");
    common("ENDBLK");
    writer.group(100, "AcDbBlockEnd");
}

void writeDictionaries(DxfWriter& writer) {
    const DxfWriter::Handle root = writer.newHandle();
    const DxfWriter::Handle groups = writer.newHandle();
    const auto dictionary = [&](DxfWriter::Handle own, DxfWriter::Handle owner) {
        writer.group(0, "DICTIONARY");
        writer.handle(5, own);
        writer.handle(330, owner);
        writer.group(100, "AcDbDictionary");
        writer.integer(281, 1); // an entry that is there is kept
    };
    writer.beginSection("OBJECTS");
    dictionary(root, 0); // the first object is the root
    writer.group(3, "ACAD_GROUP");
    writer.handle(350, groups);
    dictionary(groups, root);
    writer.endSection();
}

} // namespace

void beginDxf(DxfWriter& writer, const DxfContents& contents) {
    writeHeader(writer, contents);
    if (!writer.isOld()) {
        writer.beginSection("CLASSES");
        writer.endSection();
    }
    writeTables(writer, contents);
    if (!writer.isOld()) {
        writer.beginSection("BLOCKS");
        writeBlock(writer, "*Model_Space", writer.owners().modelSpace, false);
        writeBlock(writer, "*Paper_Space", writer.owners().paperSpace, true);
        writer.endSection();
    }
    writer.beginSection("ENTITIES");
}

void endDxf(DxfWriter& writer) {
    writer.endSection();
    if (!writer.isOld()) {
        writeDictionaries(writer);
    }
    writer.group(0, "EOF");
}

} // namespace fenmark::exchange
