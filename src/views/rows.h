#pragma once

#include <span>
#include <string>
#include <string_view>

#include "mapper/field_mapper.h"
#include "xml/node.h"

// The rows that the lists of orders, activities, cost lines and hour registrations are made of.
namespace tandril::views {

// Object kinds, the first argument of the page's functions.
inline constexpr std::string_view orderKind = "1";
inline constexpr std::string_view activityKind = "2";
inline constexpr std::string_view labourKind = "4";

// A record as the page addresses it.
struct Reference {
    std::string_view kind;
    std::string_view order;
    std::string_view activity;
    std::string_view line;
};

// A clickable text that opens the record: `<span id=... class=links onclick=...>text</span>`.
// `function` is the page's function that opens it.
std::string link(std::string_view id, std::string_view function, const Reference& reference,
                 std::string_view text);
// The same for `showdetails`.
std::string detailLink(std::string_view id, const Reference& reference, std::string_view text);

// The row with an order's number over all columns.
std::string orderRow(std::string_view order, int columns);

// Whether a change state is one of those.
bool isOneOf(std::string_view state, std::span<const std::string_view> states);

// Change states as the lists group them.
inline constexpr std::string_view workingStates[] = {"O", "M", "N"};
inline constexpr std::string_view sentStates[] = {"MU", "NU"};
// Groups of sent lists: an unchanged group may hold records that were sent.
inline constexpr std::string_view sentGroupStates[] = {"O", "MU", "NU"};

// The markup that frames lists.
inline constexpr std::string_view listPanel =
    "<table width=100% border=0 cellspacing=0 cellpadding=0 bgcolor=#C7D4EB>";
inline constexpr std::string_view plainPanel =
    "<table width=100% border=0 cellspacing=0 cellpadding=0>";
inline constexpr std::string_view scrollDivision = "<div style=\"height:125; overflow:auto;\">";
inline constexpr std::string_view bodyTable =
    "<table border=0 cellspacing=1 cellpadding=0 width=100%>";

}  // namespace tandril::views
