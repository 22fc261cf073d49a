// Keyed archives, XML or binary property lists, as the customer and filter files and the tag
// list hold them. A list that reads must archive again into one that reads the same.

#include "FuzzSetup.h"
#include "search/Filter.h"
#include "stores/Customer.h"
#include "stores/KeyedUnarchiver.h"

#include <cstdlib>

extern "C" int LLVMFuzzerInitialize(int *, char ***) {
    FuzzSetup::prepare();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const QByteArray bytes =
        QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size));
    KeyedUnarchiver::unarchive(bytes, {});

    const Customer::ListReading customers = Customer::unarchiveList(bytes);
    if (!customers.customers.isEmpty()) {
        const Customer::ListReading again =
            Customer::unarchiveList(Customer::archiveList(customers.customers));
        if (!again.problems.isEmpty() || again.customers.size() != customers.customers.size())
            std::abort();
    }

    if (const auto filters = Filter::unarchiveList(bytes)) {
        const auto again = Filter::unarchiveList(Filter::archiveList(*filters));
        if (!again || again->size() != filters->size())
            std::abort();
    }
    return 0;
}
