// Whatever stands in an argument or an extract, only the intended statement runs, or none.
#include "masterdata/hostile_values.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <functional>

#include "masterdata/look_up.h"
#include "masterdata/synchronisation.h"
#include "masterdata/tables.h"
#include "masterdata/windows.h"
#include "masterdata/zoom.h"
#include "platform/odbc/connection.h"
#include "support/query_result.h"

namespace tandril::test {
namespace {

using masterdata::WindowKind;
using ::testing::AnyOf;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

using Records = std::vector<std::vector<std::string>>;

TEST(HostileValues, AreManyAndOfBothKinds) {
    const auto values = hostileValues();
    const auto good = std::count_if(values.begin(), values.end(), [](const std::string& value) {
        return readAsLiteral(value).has_value();
    });
    EXPECT_GE(good, 200);
    EXPECT_GE(static_cast<std::ptrdiff_t>(values.size()) - good, 200);
}

// A function that asks the database with a value, and the statement that it is to send.
struct Question {
    const char* name;
    std::function<void(platform::Connection&, const std::string& value)> ask;
    std::function<std::string(const std::string& value)> statement;
};

void askWindow(platform::Connection& connection, WindowKind kind, std::string_view field,
               const std::string& value) {
    const mapper::FieldMapper mapper = windowTexts();
    masterdata::fieldWindow({mapper, true, [&]() -> platform::Connection& { return connection; }},
                            kind, field, value);
}

std::vector<Question> questions() {
    return {
        {"hyperlink",
         [](platform::Connection& connection, const std::string& value) {
             askWindow(connection, WindowKind::Hyperlink, "Problem", value);
         },
         [](const std::string& value) {
             return "SELECT * FROM PROBLEMS WHERE CPRL = '" + value + "'";
         }},
        {"zoom",
         [](platform::Connection& connection, const std::string& value) {
             askWindow(connection, WindowKind::Zoom, "Object", value);
         },
         [](const std::string& value) {
             return "SELECT * FROM OBJECTS WHERE CCFG = '" + value + "'";
         }},
        {"value",
         [](platform::Connection& connection, const std::string& value) {
             masterdata::hasValue(connection, "Unit", value);
         },
         [](const std::string& value) {
             return "select * from UNITS where CUNI = '" + value + "'";
         }},
        {"object",
         [](platform::Connection& connection, const std::string& value) {
             masterdata::hasObject(connection, "C", value);
         },
         [](const std::string& value) {
             return "select * from OBJECTS where CCFG ='C' and CROB = '" + value + "'";
         }},
        {"configuration",
         [](platform::Connection& connection, const std::string& value) {
             masterdata::hasObject(connection, value, "O");
         },
         [](const std::string& value) {
             return "select * from OBJECTS where CCFG ='" + value + "' and CROB = 'O'";
         }},
        {"number",
         [](platform::Connection& connection, const std::string& value) {
             masterdata::hasObjectNumber(connection, "C", value);
         },
         [](const std::string& value) {
             return "Select * from OBJECTS where CCFG = 'C' and OSEQ = '" + value + "'";
         }},
    };
}

TEST(HostileArguments, SendTheIntendedStatementOrNone) {
    for (const Question& question : questions()) {
        for (const std::string& value : hostileValues()) {
            FakeDatabase database;
            const auto connection = database.open("");
            const std::string statement = question.statement(value);
            database.answer(statement, {{"CROB", "OSEQ"}, {}});
            if (readAsLiteral(value)) {
                question.ask(*connection, value);
                EXPECT_THAT(database.statements, ElementsAre(statement)) << question.name;
            } else {
                EXPECT_THROW(question.ask(*connection, value), Fault) << value;
                EXPECT_THAT(database.statements, IsEmpty()) << question.name;
            }
        }
    }
}

// Hands everything on to a connection that stays open.
class Borrowed : public platform::Connection {
  public:
    explicit Borrowed(platform::Connection& target) : target_(target) {}
    void query(std::string_view sql,
               const std::function<void(const std::vector<std::string>&)>& columns,
               const std::function<bool(const std::vector<std::string>&)>& row) override {
        target_.query(sql, columns, row);
    }
    void execute(std::string_view sql) override { target_.execute(sql); }
    void begin() override { target_.begin(); }
    void commit() override { target_.commit(); }
    void rollback() override { target_.rollback(); }

  private:
    platform::Connection& target_;
};

// A SQLite database with all tables, each with the columns of its key and a description, and a row.
class RealDatabase {
  public:
    RealDatabase() : database_("Driver=libsqlite3odbc.so;StepAPI=1;Database=:memory:") {
        contentQuery_ = "SELECT 'names', name, '', '', '', '' FROM sqlite_master";
        for (const masterdata::Table& table : masterdata::tables()) {
            const std::string name(table.name);
            const std::string key(table.keyColumn);
            if (table.name == masterdata::objectsTable) {
                database_.execute(
                    "CREATE TABLE OBJECTS (COMP TEXT, CCFG TEXT, CROB TEXT, OSEQ TEXT,"
                    " DSCA TEXT)");
                contentQuery_ += " UNION ALL SELECT 'OBJECTS', * FROM OBJECTS";
            } else {
                database_.execute("CREATE TABLE " + name + " (COMP TEXT, " + key +
                                  " TEXT, DSCA TEXT)");
                contentQuery_ += " UNION ALL SELECT '" + name + "', *, '', '' FROM " + name;
            }
            reset(name);
        }
        start_ = content();
    }

    platform::Connection& connection() { return database_; }
    std::unique_ptr<platform::Connection> open() { return std::make_unique<Borrowed>(database_); }

    Records rowsOf(const std::string& table) {
        return resultOf(database_, "SELECT * FROM " + table).records;
    }
    bool isAsAtTheStart() { return content() == start_; }
    // Whether all tables but this one are as at the start.
    bool areOthersAsAtTheStart(const std::string& changed) {
        return without(content(), changed) == without(start_, changed);
    }

    // Gives the table the one row that it had at the start.
    void reset(const std::string& table) {
        database_.execute("DELETE FROM " + table);
        database_.execute("INSERT INTO " + table +
                          (table == masterdata::objectsTable
                               ? " VALUES ('1', 'C', 'O', '7', 'kept')"
                               : " VALUES ('1', 'k', 'kept')"));
    }
    // By another way into the database than the one that is tested.
    void insert(const std::string& table, const std::vector<std::string>& record) {
        std::string sql = "INSERT INTO " + table + " VALUES (";
        for (const std::string& value : record) {
            std::string hex;
            for (const char c : value) {
                constexpr std::string_view digits = "0123456789ABCDEF";
                hex += digits[static_cast<unsigned char>(c) / 16];
                hex += digits[static_cast<unsigned char>(c) % 16];
            }
            sql += (sql.back() == '(' ? "" : ", ") + ("CAST(X'" + hex + "' AS TEXT)");
        }
        database_.execute(sql + ")");
    }

  private:
    // Every table's rows and name, each record led by where it comes from.
    Records content() { return resultOf(database_, contentQuery_).records; }

    static Records without(Records records, const std::string& table) {
        std::erase_if(records, [&](const auto& record) { return record[0] == table; });
        return records;
    }

    platform::odbc::OdbcConnection database_;
    std::string contentQuery_;
    Records start_;
};

TEST(HostileArguments, FindExactlyTheirRecordInSqlite) {
    RealDatabase real;
    for (const std::string& value : hostileValues()) {
        const auto text = readAsLiteral(value);
        if (!text) continue;
        real.reset("UNITS");
        EXPECT_FALSE(masterdata::hasValue(real.connection(), "Unit", value)) << value;
        real.insert("UNITS", {"1", *text, "<found>"});
        EXPECT_TRUE(masterdata::hasValue(real.connection(), "Unit", value)) << value;
        const mapper::FieldMapper mapper = windowTexts();
        EXPECT_THAT(
            masterdata::fieldWindow(
                {mapper, true, [&]() -> platform::Connection& { return real.connection(); }},
                WindowKind::Hyperlink, "Unit", value),
            HasSubstr("<td>" + *text +
                      "</td></tr><tr><td nowrap>&nbsp;Description</td>"
                      "<td><found></td></tr></table></td></tr></table>"));
    }
    real.reset("UNITS");
    EXPECT_TRUE(real.isAsAtTheStart());
}

// A place in an extract that takes a value, the statement that it is to send, and the rows of the
// table afterwards when the value reads as `text`.
struct Place {
    const char* name;
    std::string table;
    std::function<std::string(const std::string& xml)> unit;
    std::function<std::string(const std::string& value)> statement;
    std::function<Records(const std::string& text)> rows;
};

std::vector<Place> placesOfUnits() {
    const auto unit = [](const std::string& company, const std::string& row) {
        return "<HBMasterData COMP=\"" + company + "\"><UNITS>" + row + "</UNITS></HBMasterData>";
    };
    const std::vector<std::string> kept = {"1", "k", "kept"};
    const auto unchanged = [=](const std::string&) { return Records{kept}; };
    return {
        {"company of an insertion", "UNITS",
         [=](const std::string& x) {
             return unit(x, "<r STATUS='I'><CUNI>n</CUNI><DSCA>new</DSCA></r>");
         },
         [](const std::string& v) {
             return "INSERT INTO UNITS (COMP,CUNI,DSCA) VALUES ('" + v + "','n','new')";
         },
         [=](const std::string& text) {
             return Records{kept, {text, "n", "new"}};
         }},
        {"first text of an insertion", "UNITS",
         [=](const std::string& x) {
             return unit("1", "<r STATUS='I'><CUNI>" + x + "</CUNI><DSCA>new</DSCA></r>");
         },
         [](const std::string& v) {
             return "INSERT INTO UNITS (COMP,CUNI,DSCA) VALUES ('1','" + v + "','new')";
         },
         [=](const std::string& text) {
             return Records{kept, {"1", text, "new"}};
         }},
        {"last text of an insertion", "UNITS",
         [=](const std::string& x) {
             return unit("1", "<r STATUS='I'><CUNI>n</CUNI><DSCA>" + x + "</DSCA></r>");
         },
         [](const std::string& v) {
             return "INSERT INTO UNITS (COMP,CUNI,DSCA) VALUES ('1','n','" + v + "')";
         },
         [=](const std::string& text) {
             return Records{kept, {"1", "n", text}};
         }},
        {"text of a modification", "UNITS",
         [=](const std::string& x) {
             return unit("1", "<r STATUS='M' ID='k'><DSCA>" + x + "</DSCA></r>");
         },
         [](const std::string& v) {
             return "UPDATE UNITS SET DSCA = '" + v + "' WHERE  COMP = '1' and CUNI = 'k'";
         },
         [](const std::string& text) {
             return Records{{"1", "k", text}};
         }},
        {"key of a modification", "UNITS",
         [=](const std::string& x) {
             return unit("1", "<r STATUS='M' ID=\"" + x + "\"><DSCA>new</DSCA></r>");
         },
         [](const std::string& v) {
             return "UPDATE UNITS SET DSCA = 'new' WHERE  COMP = '1' and CUNI = '" + v + "'";
         },
         unchanged},
        {"company of a modification", "UNITS",
         [=](const std::string& x) { return unit(x, "<r STATUS='M' ID='k'><DSCA>new</DSCA></r>"); },
         [](const std::string& v) {
             return "UPDATE UNITS SET DSCA = 'new' WHERE  COMP = '" + v + "' and CUNI = 'k'";
         },
         unchanged},
        {"key of a deletion", "UNITS",
         [=](const std::string& x) { return unit("1", "<r STATUS='D' ID=\"" + x + "\"/>"); },
         [](const std::string& v) {
             return "DELETE FROM UNITS WHERE  COMP = '1' and CUNI = '" + v + "'";
         },
         unchanged},
        {"company of a deletion", "UNITS",
         [=](const std::string& x) { return unit(x, "<r STATUS='D' ID='k'/>"); },
         [](const std::string& v) {
             return "DELETE FROM UNITS WHERE  COMP = '" + v + "' and CUNI = 'k'";
         },
         unchanged},
    };
}

std::vector<Place> placesOfObjects() {
    const auto unit = [](const std::string& row) {
        return "<HBMasterData COMP=\"1\"><OBJECTS>" + row + "</OBJECTS></HBMasterData>";
    };
    const std::vector<std::string> kept = {"1", "C", "O", "7", "kept"};
    std::vector<Place> places;
    for (std::size_t key = 0; key < 3; ++key) {
        // The row's attributes, or the keys in the statement, with the value in one of them.
        const auto keys = [key](const std::string& value) {
            std::vector<std::string> all = {"C", "O", "7"};
            all[key] = value;
            return all;
        };
        const auto attributes = [keys](const std::string& x) {
            const auto all = keys(x);
            return " CCFG=\"" + all[0] + "\" CROB=\"" + all[1] + "\" OSEQ=\"" + all[2] + "\"";
        };
        places.push_back(
            {"key of an object's insertion", "OBJECTS",
             [=](const std::string& x) {
                 return unit("<r STATUS='I'" + attributes(x) + "><DSCA>new</DSCA></r>");
             },
             [=](const std::string& v) {
                 const auto all = keys(v);
                 return "INSERT INTO OBJECTS (COMP, CCFG,CROB,OSEQ,DSCA) VALUES ('1','" + all[0] +
                        "','" + all[1] + "','" + all[2] + "','new')";
             },
             [=](const std::string& text) {
                 const auto all = keys(text);
                 return Records{kept, {"1", all[0], all[1], all[2], "new"}};
             }});
        places.push_back(
            {"key of an object's modification", "OBJECTS",
             [=](const std::string& x) {
                 return unit("<r STATUS='M'" + attributes(x) + "><DSCA>new</DSCA></r>");
             },
             [=](const std::string& v) {
                 const auto all = keys(v);
                 return "UPDATE OBJECTS SET DSCA = 'new' WHERE  COMP = '1' and CCFG = '" + all[0] +
                        "' and CROB = '" + all[1] + "' and OSEQ = '" + all[2] + "'";
             },
             [=](const std::string&) { return Records{kept}; }});
    }
    return places;
}

std::vector<Place> allPlaces() {
    std::vector<Place> places = placesOfUnits();
    for (Place& place : placesOfObjects()) places.push_back(std::move(place));
    return places;
}

TEST(HostileExtract, SendsTheIntendedStatementOrNone) {
    for (const Place& place : allPlaces()) {
        for (const std::string& value : hostileValues()) {
            FakeDatabase database;
            EXPECT_EQ(masterdata::synchronise(place.unit(escaped(value)),
                                              [&] { return database.open(""); }),
                      "SUCCESSFUL");
            if (readAsLiteral(value)) {
                EXPECT_THAT(database.statements,
                            ElementsAre("BEGIN", place.statement(value), "COMMIT"))
                    << place.name;
            } else {
                EXPECT_THAT(database.statements, ElementsAre("BEGIN", "COMMIT"))
                    << place.name << ": " << value;
            }
        }
    }
}

TEST(HostileExtract, ChangesOnlyTheIntendedRowInSqlite) {
    RealDatabase real;
    for (const Place& place : allPlaces()) {
        for (const std::string& value : hostileValues()) {
            // An empty value is an ordinary one.
            if (value.empty()) continue;
            EXPECT_EQ(
                masterdata::synchronise(place.unit(escaped(value)), [&] { return real.open(); }),
                "SUCCESSFUL");
            const auto text = readAsLiteral(value);
            if (!text) {
                ASSERT_TRUE(real.isAsAtTheStart()) << place.name << ": " << value;
                continue;
            }
            ASSERT_TRUE(real.areOthersAsAtTheStart(place.table)) << place.name << ": " << value;
            ASSERT_EQ(real.rowsOf(place.table), place.rows(*text)) << place.name << ": " << value;
            real.reset(place.table);
        }
    }
}

// Nothing of an object's deletion is ever sent: its statement has one apostrophe too few.
TEST(HostileExtract, NeverDeletesAnObject) {
    for (const std::string& value : hostileValues()) {
        FakeDatabase database;
        for (const std::string attribute : {"CCFG", "CROB", "OSEQ"}) {
            masterdata::synchronise("<HBMasterData COMP='1'><OBJECTS><r STATUS='D' " + attribute +
                                        "=\"" + escaped(value) + "\"/></OBJECTS></HBMasterData>",
                                    [&] { return database.open(""); });
        }
        EXPECT_THAT(database.statements, Each(AnyOf("BEGIN", "COMMIT"))) << value;
        EXPECT_THAT(database.statements, SizeIs(6)) << value;
    }
}

TEST(HostileExtract, DoesNothingForAStatusOrAServiceCentreOfItsOwn) {
    for (const std::string& value : hostileValues()) {
        if (value.empty()) continue;
        FakeDatabase database;
        EXPECT_EQ(masterdata::synchronise(
                      "<HBMasterData COMP='1'><UNITS><r ID='k' STATUS=\"" + escaped(value) +
                          "\"/></UNITS><TASKS SERVICECENTER=\"" + escaped(value) +
                          "\"><r STATUS='D' ID='k'/></TASKS></HBMasterData>",
                      [&] { return database.open(""); }),
                  "SUCCESSFUL");
        EXPECT_THAT(database.statements, ElementsAre("BEGIN", "COMMIT")) << value;
    }
}

// A name that XML allows may be a comment or an operator to SQL: behind "A--" a line end in the
// text would begin a statement of the attacker's.
TEST(HostileExtract, FailsTheTableForNamesThatAreNoPlainColumns) {
    RealDatabase real;
    const std::string text = "&#10; = COMP; DELETE FROM UNITS; --";
    for (const std::string name : {"DSCA--", "DSCA-", "D.S", "DSCA:x", "--", "_--", "UNITS.DSCA"}) {
        for (const std::string status : {"I", "M"}) {
            const std::string row =
                "<r STATUS='" + status + "' ID='k'><" + name + ">" + text + "</" + name + "></r>";
            const std::string extract =
                "<HBMasterData COMP='1'><UNITS>" + row + "</UNITS></HBMasterData>";
            FakeDatabase database;
            const std::string result =
                masterdata::synchronise(extract, [&] { return database.open(""); });
            // A name cannot begin with a sign in XML.
            EXPECT_EQ(result, name == "--" ? "INVALID XML String!!" : "SUCCESSFUL");
            EXPECT_THAT(database.statements, Each(AnyOf("BEGIN", "COMMIT"))) << name;
            masterdata::synchronise(extract, [&] { return real.open(); });
            EXPECT_TRUE(real.isAsAtTheStart()) << name;
        }
    }
}

}  // namespace
}  // namespace tandril::test
