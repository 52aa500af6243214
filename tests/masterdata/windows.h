#pragma once

#include <string>

#include "mapper/field_mapper.h"
#include "masterdata/source.h"
#include "platform/fault.h"
#include "support/fake_database.h"

namespace tandril::test {

// A field mapper with some labels and all texts that the windows show.
inline mapper::FieldMapper windowTexts() {
    constexpr std::string_view xml =
        "<harbrook><zoomhyperlink><CUNI LABEL=\"Unit\"/><CROB LABEL=\"Object\"/>"
        "<OSEQ LABEL=\"No.\"/><DSCA LABEL=\"Description\"/></zoomhyperlink>"
        "<I18N><a ID=\"SLBUE9171\" DESCRIPTION=\"Units\"/><a ID=\"SLBEU0304\" "
        "DESCRIPTION=\"Details\"/>"
        "<a ID=\"SLBEU0305\" DESCRIPTION=\"Select\"/><a ID=\"SLBEU0306\" DESCRIPTION=\"No "
        "record\"/>"
        "<a ID=\"SLBEU0308\" DESCRIPTION=\"No database\"/><a ID=\"SLBEU0309\" DESCRIPTION=\"No "
        "table\"/>"
        "<a ID=\"SLBUE9150\" DESCRIPTION=\"No rows\"/></I18N></harbrook>";
    return mapper::FieldMapper(*xml::Document::parse(xml));
}

// A database of fakes with the source of the windows on it.
struct Windows {
    mapper::FieldMapper mapper = windowTexts();
    FakeDatabase database;
    std::unique_ptr<platform::Connection> connection = database.open("Tandril Master Data");

    masterdata::Source source() {
        return {mapper, true, [this]() -> platform::Connection& {
                    if (!connection) throw Fault("closed");
                    return *connection;
                }};
    }
    masterdata::Source withoutDatabase() {
        connection.reset();
        masterdata::Source source = this->source();
        source.hasDatabase = false;
        return source;
    }
};

}  // namespace tandril::test
