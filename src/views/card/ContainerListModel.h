#pragma once

#include "ContainerRowContent.h"
#include "controls/RowListModel.h"

#include <QtQmlIntegration>

namespace tarnwick {

/// The containers of one card.
class ContainerListModel : public RowListModel<ContainerRowContent> {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QList<tarnwick::ContainerRowContent> rows READ rows WRITE setRows)

public:
    using RowListModel::RowListModel;
};

} // namespace tarnwick
