#include "platform/linux/unavailable_database.h"

#include "platform/fault.h"

namespace tandril::platform {

std::unique_ptr<Connection> UnavailableDatabase::open(std::string_view dsn) {
    throw Fault("cannot open the data source \"" + std::string(dsn) +
                "\": the database is not available yet");
}

}  // namespace tandril::platform
