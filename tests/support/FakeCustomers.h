#pragma once

#include "model/CustomerDirectory.h"

#include <QHash>

// Customers by id with their visibility; an id not in the table does not exist.
class FakeCustomers : public CustomerDirectory {
public:
    std::optional<bool> isCustomerVisible(int customerId) const override {
        const auto it = visible.constFind(customerId);
        return it == visible.cend() ? std::nullopt : std::optional<bool>(*it);
    }
    QHash<int, bool> visible;
};
