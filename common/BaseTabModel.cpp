#include "common/BaseTabModel.h"

#include <QDebug>

BaseTabModel::BaseTabModel(QObject *parent) : QObject(parent) { }

void BaseTabModel::refresh() { qDebug() << "I'm not supposed to be here today"; }
