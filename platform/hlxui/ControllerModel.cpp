#include "hlxui/ControllerModel.h"

ControllerModel::ControllerModel(QObject *parent) : QObject(parent) { }

ControllerModel::~ControllerModel() = default;

uint8_t ControllerModel::hasNucMask() { return 0; }
