// What the user is told of a profile or macro that the engine has not added. Main thread.
// answer: what the engine said, none without a usable answer.
#pragma once

#include <QString>
#include <optional>

#include "model/RecordRules.h"
#include "protocol/ReturnStatus.h"

class QWidget;

namespace skarn {

// Why, as a sentence.
QString reasonAgainstAdding(vorn::RecordKind kind, std::optional<vorn::ReturnStatus> answer);

// Says so on a sheet of the window, with the reason. name: the record's.
void showAddProblem(QWidget* window, const QString& name, vorn::RecordKind kind,
                    std::optional<vorn::ReturnStatus> answer);

}  // namespace skarn
