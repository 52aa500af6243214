#include "component/kept_copies.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "component/paths.h"
#include "platform/fault.h"
#include "store/order_store.h"
#include "store/removed_records.h"

namespace tandril::kept_copies {
namespace {

using store::RemovedRecords;

RemovedRecords load(const platform::FileSystem& files) {
    std::optional<xml::Document> document = xml::load(files, paths::removed);
    if (!document && files.fileExists(paths::removed)) {
        throw Fault("\"" + std::string(paths::removed) + "\" is damaged");
    }
    return document ? RemovedRecords(std::move(*document)) : RemovedRecords();
}

store::OrderStore loadStore(const platform::FileSystem& files) {
    auto store = store::OrderStore::from(xml::load(files, paths::store));
    if (!store) {
        throw Fault("\"" + std::string(paths::store) + "\" cannot be loaded");
    }
    return std::move(*store);
}

std::vector<std::string> unknownIds(const std::vector<RemovedRecords::Entry>& entries,
                                    const std::vector<std::string>& ids) {
    std::vector<std::string> unknown;
    std::copy_if(ids.begin(), ids.end(), std::back_inserter(unknown), [&](const std::string& id) {
        return std::none_of(entries.begin(), entries.end(),
                            [&](const RemovedRecords::Entry& entry) { return entry.id == id; });
    });
    return unknown;
}

void save(platform::FileSystem& files, const store::OrderStore& store,
          const RemovedRecords& copies) {
    const platform::NewContent both[] = {{paths::store, store.document().content()},
                                         {paths::removed, copies.content()}};
    files.replaceTogether(both);
}

}  // namespace

std::vector<Copy> list(Module& module) {
    std::vector<Copy> copies;
    const RemovedRecords removed = load(module.machine.files);
    for (const RemovedRecords::Entry& entry : removed.entries()) {
        copies.push_back({entry.id, entry.time, entry.reason, entry.key,
                          std::string(store::stateOf(entry.record))});
    }
    return copies;
}

Restored restore(Module& module, const std::vector<std::string>& ids, As as) {
    platform::FileSystem& files = module.machine.files;
    RemovedRecords removed = load(files);
    const std::vector<RemovedRecords::Entry> entries = removed.entries();
    Restored result{{}, {}, unknownIds(entries, ids)};
    if (!result.unknown.empty()) {
        return result;
    }
    store::OrderStore store = loadStore(files);
    for (const RemovedRecords::Entry& entry : entries) {
        if (std::find(ids.begin(), ids.end(), entry.id) == ids.end()) {
            continue;
        }
        if (!store::restore(store, entry)) {
            result.existing.push_back(entry.id);
            continue;
        }
        if (as == As::Unsent) {
            store::markUnsent(store, entry.key);
        }
        result.restored.push_back(entry.id);
        removed.remove(entry);
    }
    if (!result.restored.empty()) {
        save(files, store, removed);
    }
    return result;
}

}  // namespace tandril::kept_copies
