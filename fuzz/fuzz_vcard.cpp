// Address cards as they are dropped on the customer list.

#include "FuzzSetup.h"
#include "stores/VCardReader.h"

extern "C" int LLVMFuzzerInitialize(int *, char ***) {
    FuzzSetup::prepare();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    VCardReader::read(
        QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size)));
    return 0;
}
