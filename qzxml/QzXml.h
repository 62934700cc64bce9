#pragma once

// Everything that an application or a generated class needs of the library.

#include "qzxml/platform/Assert.h"
#include "qzxml/platform/Export.h"
#include "qzxml/runtime/XmlTypes.h"
