// Made by qzxml generate from order.xsd.
#pragma once

#include "orders/Address.h"
#include "orders/Enumerations.h"
#include "orders/Item.h"
#include "orders/Namespace.h"
#include "orders/Order.h"
#include "orders/Roots.h"
#include "orders/SimpleTypes.h"
#include "orders/USAddress.h"
#include "qzxml/runtime/QzException.h"
