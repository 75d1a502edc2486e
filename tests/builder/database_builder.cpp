#include "database_builder.h"

#include "catalog.h"

namespace ledgix::test {

namespace {

using enum jet::ColumnType;

constexpr std::uint32_t kSystemObject = 0x80000000;
constexpr double kSomeDay = 38000.5;

ColumnSpec TextColumn(const char* name) {
    return {.name = name, .type = kText, .characters = 255};
}

std::vector<ColumnSpec> ObjectColumns(const jet::Format& format) {
    const std::size_t binary = format.generation == jet::Generation::kJet3 ? 255 : 510;
    return {{.name = "Id"},
            {.name = "ParentId"},
            TextColumn("Name"),
            {.name = "Type", .type = kInt16},
            {.name = "DateCreate", .type = kDate},
            {.name = "DateUpdate", .type = kDate},
            {.name = "Owner", .type = kBinary, .characters = binary},
            {.name = "Flags"},
            {.name = "Database", .type = kMemo},
            {.name = "Connect", .type = kMemo},
            TextColumn("ForeignName"),
            {.name = "RmtInfoShort", .type = kBinary, .characters = binary},
            {.name = "RmtInfoLong", .type = kOle},
            {.name = "Lv", .type = kOle},
            {.name = "LvProp", .type = kOle},
            {.name = "LvModule", .type = kOle},
            {.name = "LvExtra", .type = kOle}};
}

std::vector<ColumnSpec> AccessColumns() {
    return {{.name = "ObjectId"},
            {.name = "SID", .type = kBinary, .characters = 255},
            {.name = "ACM"},
            {.name = "FInheritable", .type = kBoolean}};
}

std::vector<ColumnSpec> QueryColumns() {
    return {{.name = "ObjectId"}, {.name = "Attribute", .type = kByte},  TextColumn("Name1"),
            TextColumn("Name2"),  {.name = "Expression", .type = kMemo}, {.name = "Flag", .type = kInt16}};
}

std::vector<ColumnSpec> RelationColumns() {
    return {TextColumn("szRelationship"), {.name = "grbit"},      {.name = "ccolumn"},
            {.name = "icolumn"},          TextColumn("szObject"), TextColumn("szColumn")};
}

}  // namespace

DatabaseBuilder::DatabaseBuilder(jet::Generation generation, std::size_t map_size) : file_(generation, map_size) {
    for (int i = 0; i < 4; ++i)
        file_.Allocate();
    const std::vector<std::vector<ColumnSpec>> columns{ObjectColumns(file_.format()), AccessColumns(), QueryColumns(),
                                                       RelationColumns()};
    for (std::size_t i = 0; i < columns.size(); ++i)
        system_tables_.emplace_back(file_, jet::kCatalogPage + static_cast<jet::PageNumber>(i), true, columns[i]);
    const auto container = [this](std::int32_t id, const char* name) {
        AddEntry(id, 0x0F000000, name, jet::kContainerEntry, kSystemObject);
    };
    container(jet::kTablesContainer, "Tables");
    container(jet::kTablesContainer + 1, "Databases");
    container(jet::kTablesContainer + 2, "Relationships");
    AddEntry(0x10000000, jet::kTablesContainer + 1, "MSysDb", jet::kDatabaseEntry, kSystemObject);
    std::int32_t page = jet::kCatalogPage;
    for (const char* name : {"MSysObjects", "MSysACEs", "MSysQueries", "MSysRelationships"})
        AddEntry(page++, jet::kTablesContainer, name, jet::kTableEntry, kSystemObject);
}

void DatabaseBuilder::SkipTo(jet::PageNumber page) {
    while (file_.page_count() < page)
        file_.Allocate();
}

TableBuilder& DatabaseBuilder::AddTable(const std::string& name, std::vector<ColumnSpec> columns) {
    const jet::PageNumber page = file_.Allocate();
    AddEntry(static_cast<std::int32_t>(page), jet::kTablesContainer, name, jet::kTableEntry, 0);
    return tables_.emplace_back(file_, page, false, std::move(columns));
}

void DatabaseBuilder::AddEntry(std::int32_t id, std::int32_t parent, const std::string& name, std::int16_t type,
                               std::uint32_t flags, const runtime::Variant& database,
                               const runtime::Variant& foreign_name) {
    const runtime::Null null;
    system_tables_[0].AddRow({id, parent, name, type, runtime::Date{kSomeDay}, runtime::Date{kSomeDay},
                              runtime::Binary{0x03, 0x01}, static_cast<std::int32_t>(flags), database, null,
                              foreign_name, null, null, null, null, null, null});
}

std::vector<std::uint8_t> DatabaseBuilder::Finish() {
    for (TableBuilder& table : tables_)
        table.Finish();
    for (TableBuilder& table : system_tables_)
        table.Finish();
    return file_.Finish();
}

}  // namespace ledgix::test
