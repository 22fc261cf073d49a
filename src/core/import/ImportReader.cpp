#include "ImportReader.h"

ImportReader::~ImportReader() = default;
