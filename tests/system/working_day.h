#pragma once

#include <cstdint>
#include <functional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "component/client20.h"
#include "platform/file_system.h"
#include "store/order_store.h"

namespace tandril::test {

// One call as a working day makes it.
struct DayCall {
    std::string method;
    std::vector<std::string> arguments;
};

// Makes the call; the result as text.
std::string make(Client20& client, const DayCall& call);

// Every order, activity and cost line of a document like the store.
void forEachRecord(xml::Node root,
                   const std::function<void(const store::RecordKey& key, xml::Node record)>& visit);

// Files of a home on which a day can begin: a field mapper without fields and a store with a few
// orders. The registry and the log come from Initialize.
void prepareDay(platform::FileSystem& files);

// A random day of an engineer: downloads, edits, additions, uploads with the server's answers,
// deletions. The same seed on the same files makes the same day.
class WorkingDay {
  public:
    // New records are numbered from behind `lastNumber` on.
    WorkingDay(const platform::FileSystem& files, std::uint32_t seed, int lastNumber = 100)
        : files_(files), random_(seed), lastNumber_(lastNumber) {}

    // The next call, which fits what the files hold now.
    DayCall next();

    // Documents as the server and the page send them, also for tests of their own.
    std::string download();
    // Answers every record of the last upload: confirms, refuses, or leaves it waiting.
    std::string report();

  private:
    std::uint32_t below(std::uint32_t limit) {
        return static_cast<std::uint32_t>(random_() % limit);
    }
    bool chance(std::uint32_t percent) { return below(100) < percent; }
    std::string stamp();
    std::string text();

    store::OrderStore storeNow() const;
    std::string anyOrder(const store::OrderStore& store);
    std::string anyActivity(const store::OrderStore& store, std::string_view order);

    std::string orderRecord(std::string_view number, std::string_view state,
                            std::string_view status);
    std::string activityRecord(std::string_view number, std::string_view state,
                               std::string_view status);
    std::string lineRecord(std::string_view number, std::string_view state);
    std::string newOrder(std::string_view number);

    DayCall edit();
    DayCall add();
    DayCall remove();
    DayCall registration();

    const platform::FileSystem& files_;
    std::mt19937 random_;
    int lastNumber_;
    bool isAnswerDue_ = false;
};

}  // namespace tandril::test
