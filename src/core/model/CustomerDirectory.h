#pragma once

#include <optional>

// What the document needs of the customer store: whether a customer exists and whether its
// projects are shown.
class CustomerDirectory {
public:
    virtual ~CustomerDirectory() = default;
    // No value when no customer has the id; otherwise the customer's visibility.
    virtual std::optional<bool> isCustomerVisible(int customerId) const = 0;
};
