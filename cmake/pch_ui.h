// What nearly every source of the window includes, beside pch.h.
#pragma once
#include "pch.h"

#include <QAbstractListModel>
#include <QColor>
#include <QFont>
#include <QPointer>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQmlListProperty>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>
#include <QVariantMap>
