#pragma once

#include <string>
#include <string_view>

#include "component/call.h"

// The methods that exchange records with the server and the page, and change the store.
namespace tandril::store_calls {

// Merges what the server sent; a message for the page, or the error text.
std::string download(Call& call, const std::string& xml);

// Take edited records, new records, a new hour registration. "" or the error text.
std::string edit(Call& call, const std::string& xml);
std::string add(Call& call, const std::string& xml);
std::string addHourRegistration(Call& call, const std::string& xml);

void deleteRecord(Call& call, std::string_view order, std::string_view activity,
                  std::string_view line, std::string_view costType);
void completeOrders(Call& call);
void purge(Call& call);

// The text for the server; "" when there is nothing to send.
std::string upload(Call& call);

}  // namespace tandril::store_calls
