#include "masterdata/row_statement.h"

#include "masterdata/sql.h"
#include "platform/fault.h"

namespace tandril::masterdata {
namespace {

bool isObjects(const Table& table) {
    return table.name == objectsTable;
}

// INSERT INTO table (COMP,column,...) VALUES ('company','text',...)
std::string insertion(const Table& table, std::string_view company, xml::Node row) {
    std::string columns(isObjects(table) ? "(COMP, CCFG,CROB,OSEQ," : "(COMP,");
    std::string values("(");
    appendLiteral(values, company);
    if (isObjects(table)) {
        for (const char* key : {"CCFG", "CROB", "OSEQ"}) {
            values += ',';
            appendLiteral(values, xml::attribute(row, key));
        }
    }
    std::string_view separator;
    for (const xml::Node column : xml::elements(row)) {
        columns += separator;
        appendColumn(columns, column.name());
        values += ',';
        appendLiteral(values, xml::text(column));
        separator = ",";
    }
    std::string sql("INSERT INTO ");
    sql += table.name;
    sql += " " + columns + ") VALUES " + values + ")";
    return sql;
}

void appendEquality(std::string& sql, std::string_view column, std::string_view value) {
    sql += column;
    sql += " = ";
    appendLiteral(sql, value);
}

void appendCondition(std::string& sql, const Table& table, std::string_view company,
                     xml::Node row) {
    sql += " WHERE  ";
    appendEquality(sql, companyColumn, company);
    if (!isObjects(table)) {
        sql += " and ";
        appendEquality(sql, table.keyColumn, xml::attribute(row, "ID"));
        return;
    }
    for (const char* key : {"CCFG", "CROB", "OSEQ"}) {
        sql += " and ";
        appendEquality(sql, key, xml::attribute(row, key));
    }
}

// UPDATE table SET column = 'text',... WHERE  COMP = 'company' and key = 'key'
std::string modification(const Table& table, std::string_view company, xml::Node row) {
    std::string sql("UPDATE ");
    sql += table.name;
    sql += " SET ";
    std::string_view separator;
    for (const xml::Node column : xml::elements(row)) {
        sql += separator;
        appendColumn(sql, column.name());
        sql += " = ";
        appendLiteral(sql, xml::text(column));
        separator = ",";
    }
    appendCondition(sql, table, company, row);
    return sql;
}

std::string deletion(const Table& table, std::string_view company, xml::Node row) {
    if (isObjects(table)) {
        throw Fault("an object cannot be deleted by an extract");
    }
    std::string sql("DELETE FROM ");
    sql += table.name;
    appendCondition(sql, table, company, row);
    return sql;
}

}  // namespace

std::string rowStatement(const Table& table, std::string_view company, xml::Node row) {
    const std::string_view status = xml::attribute(row, "STATUS");
    if (status == "I") {
        return insertion(table, company, row);
    }
    if (status == "M") {
        return modification(table, company, row);
    }
    if (status == "D") {
        return deletion(table, company, row);
    }
    return {};
}

}  // namespace tandril::masterdata
