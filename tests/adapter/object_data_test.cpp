// Object-data tables and rows through the map module.
#include "scripted_host.h"

#include "host/adapter/mirdane_object_data_writer.h"

#include <gtest/gtest.h>

namespace fenmark {
namespace {

using host::MdDbObjectId;
using host::MirdaneObjectDataWriter;
using Type = mirdane::MdMap::EDataType;

class ObjectDataAdapter : public testing::Test {
  protected:
    void TearDown() override { EXPECT_TRUE(host.faults.empty()) << host.faults.front(); }
    void expectRow(std::size_t index, const std::string& table, std::uint64_t id, std::int32_t no,
                   const std::string& name, const std::string& type) {
        ASSERT_GT(host.rows.size(), index);
        const scripted::Row& row = host.rows[index];
        EXPECT_EQ(row.table, table);
        EXPECT_EQ(row.id.asUint64(), id);
        ASSERT_EQ(row.values.size(), 4U);
        EXPECT_TRUE(row.values[0].isInteger());
        EXPECT_EQ(row.values[0].integer(), no);
        for (std::size_t i = 1; i < 4; ++i) {
            EXPECT_TRUE(row.values[i].isText()) << "column " << i;
        }
        EXPECT_EQ(row.values[1].text(), name);
        EXPECT_EQ(row.values[2].text(), type);
        EXPECT_EQ(row.values[3].text(), "a.sim");
    }

    scripted::Host host;
    MirdaneObjectDataWriter writer;
};

TEST_F(ObjectDataAdapter, BothTablesHaveTheSameFourColumnsInOrder) {
    writer.definePointTable();
    writer.definePolylineTable();
    for (const char* const name : {"JSIMA_V3_Point", "JSIMA_V3_Pline"}) {
        ASSERT_TRUE(host.tables.contains(name));
        EXPECT_EQ(host.tables[name].columns, (std::vector<std::string>{"No", "Name", "Type", "FileName"}));
        EXPECT_EQ(host.tables[name].types,
                  (std::vector<Type>{Type::Integer, Type::Character, Type::Character, Type::Character}));
    }
    EXPECT_EQ(static_cast<int>(Type::Integer), 1);
    EXPECT_EQ(static_cast<int>(Type::Character), 3);
}

TEST_F(ObjectDataAdapter, TableIsDefinedThroughTheProjectOfTheCurrentDocument) {
    writer.definePointTable();
    EXPECT_EQ(host.callText(),
              "MdMapGetSession, curDocument, getProjectOfDocument, getTables, addTable JSIMA_V3_Point");
}

TEST_F(ObjectDataAdapter, TableOfAnEarlierImportStaysAsItIs) {
    host.tables["JSIMA_V3_Point"].columns = {"No", "Name", "Type", "FileName", "Remark"};
    writer.definePointTable();
    EXPECT_EQ(host.tables["JSIMA_V3_Point"].columns.size(), 5U);
    writer.writeCoordinateRow(MdDbObjectId(7), "a.sim", {"KP1", 1.0, 2.0, 3.0, 12, true});
    ASSERT_EQ(host.rows.size(), 1U);
    EXPECT_EQ(host.rows[0].values.size(), 5U);
    EXPECT_EQ(host.rows[0].values[1].text(), "KP1");
}

TEST_F(ObjectDataAdapter, TheProjectIsFetchedAnewForEachRow) {
    writer.definePointTable();
    host.calls.clear();
    const sima::SimaPoint point{"KP1", 1.0, 2.0, 3.0, 12, true};
    writer.writeCoordinateRow(MdDbObjectId(7), "a.sim", point);
    const std::string once = "MdMapGetSession, curDocument, getProjectOfDocument, getTables, "
                             "getTable JSIMA_V3_Point, initRecord, addRecord";
    EXPECT_EQ(host.callText(), once);
    writer.writeCoordinateRow(MdDbObjectId(8), "a.sim", point);
    EXPECT_EQ(host.callText(), once + ", " + once);
}

TEST_F(ObjectDataAdapter, EachSourceHasItsRow) {
    writer.definePointTable();
    writer.definePolylineTable();
    writer.writeCoordinateRow(MdDbObjectId(1), "a.sim", {"KP1", 1.0, 2.0, 3.0, 12, true});
    sima::LotData lot;
    lot.number = 101;
    lot.name = "1-2";
    writer.writeLotRow(MdDbObjectId(2), "a.sim", lot);
    sima::SimaAlignment route;
    route.routeNumber = 5;
    route.routeName = "幅杭";
    route.routeType = 4;
    writer.writeRouteRow(MdDbObjectId(3), "a.sim", route);
    sima::VerticalData vertical;
    vertical.stationName = "No.1";
    writer.writeLongitudinalRow(MdDbObjectId(4), "a.sim", 9, vertical);
    writer.writeResultRow(MdDbObjectId(5), "a.sim", 9, "L1", true);
    writer.writeResultRow(MdDbObjectId(6), "a.sim", 9, "L1", false);
    ASSERT_EQ(host.rows.size(), 6U);
    expectRow(0, "JSIMA_V3_Point", 1, 12, "KP1", "座標");
    expectRow(1, "JSIMA_V3_Pline", 2, 101, "1-2", "画地");
    expectRow(2, "JSIMA_V3_Pline", 3, 5, "幅杭", "幅杭線左");
    expectRow(3, "JSIMA_V3_Point", 4, 9, "No.1", "縦断成果");
    expectRow(4, "JSIMA_V3_Point", 5, 9, "L1", "横断成果");
    expectRow(5, "JSIMA_V3_Point", 6, 9, "L1", "縦断成果");
}

TEST_F(ObjectDataAdapter, LotWithoutANameHasAnEmptyTextNotAMissingValue) {
    writer.definePolylineTable();
    writer.writeLotRow(MdDbObjectId(2), "a.sim", sima::LotData());
    expectRow(0, "JSIMA_V3_Pline", 2, 0, "", "画地");
}

TEST_F(ObjectDataAdapter, RowWithoutATableLeavesTheObjectWithoutData) {
    EXPECT_NO_THROW(writer.writeCoordinateRow(MdDbObjectId(7), "a.sim", {"KP1", 1.0, 2.0, 3.0, 12, true}));
    EXPECT_TRUE(host.rows.empty());
}

TEST_F(ObjectDataAdapter, ForeignTableWithFewerColumnsTakesNoRow) {
    host.tables["JSIMA_V3_Point"].columns = {"No", "Name"};
    EXPECT_NO_THROW(writer.writeCoordinateRow(MdDbObjectId(7), "a.sim", {"KP1", 1.0, 2.0, 3.0, 12, true}));
    EXPECT_TRUE(host.rows.empty());
}

TEST_F(ObjectDataAdapter, EveryStepMayFailAndNothingIsRaised) {
    for (int k = 1; k <= 12; ++k) {
        host.tables.clear();
        host.rows.clear();
        host.steps = 0;
        host.failAt = k;
        EXPECT_NO_THROW({
            writer.definePointTable();
            writer.writeCoordinateRow(MdDbObjectId(7), "a.sim", {"KP1", 1.0, 2.0, 3.0, 12, true});
        }) << "step "
           << k;
        EXPECT_EQ(host.rows.size(), k <= 8 ? 0U : 1U) << "step " << k;
    }
}

} // namespace
} // namespace fenmark
