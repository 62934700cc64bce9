#include "qzxml/json/JsonReaderHandler.h"

namespace QzXmlLib16 {
namespace {

CInstanceClass g_handlerClass("IJsonReaderHandler");

}  // namespace

IJsonReaderHandler::IJsonReaderHandler() : CInstanceMonitor(g_handlerClass) {}

IJsonReaderHandler::~IJsonReaderHandler() = default;

}  // namespace QzXmlLib16
