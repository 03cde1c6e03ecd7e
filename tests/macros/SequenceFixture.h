// A Macros tab over two macros whose events the delegate keeps as an engine does: what it is told to put in their place
// is what it hands over afterwards.
#pragma once

#include <QTest>
#include <string>

#include "macros/MacroMenus.h"
#include "macros/MacrosFixture.h"
#include "model/MacroEdits.h"

namespace skarn::test {

inline constexpr int leftButton = 1, keyOfA = 4, keyOfB = 5, keyOfC = 6;

inline PropertyList keyEvent(bool isPress, int delay, int usage) {
  return vorn::macroEvent(isPress, delay, {7, static_cast<vorn::hid::Usage>(usage)});
}
inline PropertyList buttonEvent(bool isPress, int delay, int button) {
  return vorn::macroEvent(isPress, delay, {9, static_cast<vorn::hid::Usage>(button)});
}

inline PropertyList sequenceOf(std::vector<PropertyList> events) {
  return PropertyList::dictionary({{"events", PropertyList::array(std::move(events))}, {"speed", 2}});
}

// A record with a further key in its sequence.
inline PropertyList recordOf(const char* name, std::vector<PropertyList> events) {
  return PropertyList::dictionary(
      {{"MacroName", name}, {"delay", 15}, {"sequence", sequenceOf(std::move(events))}, {"macroID", 0}});
}

struct SequenceFixture : MacrosFixture {
  // Rows: 0 A down, 1, 2 B down, 3, 4 B up, 5, 6 A up
  static std::vector<PropertyList> nested() {
    return {keyEvent(true, 0, keyOfA), keyEvent(true, 100, keyOfB), keyEvent(false, 50, keyOfB),
            keyEvent(false, 200, keyOfA)};
  }

  explicit SequenceFixture(std::vector<PropertyList> events = nested())
      : engine(PropertyList::array({recordOf("Fireball", std::move(events)), recordOf("Greeting", {})})) {
    delegate.onCall = [this](const QString& call) { serve(call); };
    serve({});
    reload(engine);
    selectMacro(0);
  }

  // The delegate's lines and, at a reload, the list are those of the engine.
  void serve(const QString& call) {
    for (int macro = 0; macro < static_cast<int>(engine.size()); ++macro)
      delegate.lines[macro] = linesOf(engine.at(macro));
    if (call == QLatin1String("reloadMacros()")) reload(engine);
  }
  // What the tab puts in the place of the sequence of a macro comes back with the next lines.
  void take(int macro, std::vector<PropertyList> events) {
    engine = engine.replacing(macro, engine.at(macro).with("sequence", sequenceOf(std::move(events))));
  }

  void select(const std::vector<int>& rows) {
    lines()->clearSelection();
    for (const int row : rows) clickRow(lines(), row, Qt::ControlModifier);
    delegate.take();
  }
  std::vector<int> selected() {
    std::vector<int> rows;
    for (const QModelIndex& index : lines()->selectionModel()->selectedRows()) rows.push_back(index.row());
    std::ranges::sort(rows);
    return rows;
  }
  void choose(int tag) { chooseFromGear("mSettingsMacroDetails", tag); }
  // Every call for one edit of the whole sequence of a macro.
  static QStringList edited(std::vector<PropertyList> events, int macro = 0, const char* name = "Fireball") {
    return {"reloadMacros()",
            QStringLiteral("replaceSequence(%1, %2, %3)")
                .arg(RecordingMacros::text(sequenceOf(std::move(events))))
                .arg(macro)
                .arg(QLatin1String(name)),
            QStringLiteral("getMacroDetailsForMacroAtIndex(%1)").arg(macro)};
  }

  PropertyList engine;
};

}  // namespace skarn::test
