// A library whose entry point makes no object.

#include "core/contract/Tool.h"

extern "C" __attribute__((visibility("default"))) void ArvonCreateTool(arvon::ISupport*,
                                                                       std::shared_ptr<arvon::ITool>*);
void ArvonCreateTool(arvon::ISupport*, std::shared_ptr<arvon::ITool>*) {}
