#pragma once

#include "snapshot/reading.h"
#include "tools/vorlen-monitor/doctor/examination.h"

namespace vorlen::tool {

class Service;

// The reading, with the library's answers on the same desktop. After addKitModels().
Examination askLibrary(const Service& service, snapshot::Reading reading);

// Replaces what identifies a person, a document or a device, in the reading and in the answers, by
// the same placeholders.
void redact(Examination& examination);

} // namespace vorlen::tool
