#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tandril::bench {

// Orders by the number of their place: the first one and how many.
struct Range {
    std::size_t first;
    std::size_t count;
};

// Documents of any size, made of the sample week: order number i is the sample's order i modulo 25
// with its activities and cost lines under a number of its own. Written without blanks between
// elements, as the store is.
class Documents {
  public:
    // `sample` is the text of samples/orders.xml.
    explicit Documents(std::string_view sample);

    // A store of these orders, in the change states and statuses of the sample.
    std::string store(Range orders) const;
    // The same as the server sends it: nothing of it was changed yet, every order is open.
    std::string download(Range orders) const;
    // A new description for each of these orders.
    std::string edits(Range orders) const;
    // The server's report that confirms each of these orders and their activities and lines.
    std::string report(Range orders) const;

    // How many orders make a store of about that many bytes.
    std::size_t ordersFor(std::size_t bytes) const;
    // The number of the order in that place.
    std::string number(std::size_t place) const;

  private:
    // A text of the sample, cut where the order's number stands.
    using Template = std::vector<std::string>;
    struct Order {
        bool isProvisional = false;
        std::vector<Template> stored;      // one per section
        std::vector<Template> downloaded;  // the same
        Template confirmations;
    };

    void append(std::string& out, const Template& pieces, std::size_t place) const;
    std::string document(Range orders, std::vector<Template> Order::*kind) const;

    std::vector<Order> orders_;
};

}  // namespace tandril::bench
