#pragma once

#include <memory>

#include "tools/generator/model/Model.h"

// The model of golden/order.xsd, made by hand, so that what is written of it depends on no reader.
struct OrderModel {
  OrderModel();
  OrderModel(const OrderModel&) = delete;
  OrderModel& operator=(const OrderModel&) = delete;

  qzxml::generator::Model model;

  // What the types of the model refer to.
  qzxml::generator::SimpleType token;
  qzxml::generator::SimpleType sku;
};
