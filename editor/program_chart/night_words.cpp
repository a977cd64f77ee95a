#include "editor/program_chart/night_words.h"

#include <QtCore/QStringList>

#include "editor/qt_text.h"

namespace editor {
namespace {

using host::TextId;

constexpr int Hour = 60;

QString twoDigits(int number) {
  return QString::number(number).rightJustified(2, QLatin1Char('0'));
}

QString hoursAndMinutes(int minutes) {
  return twoDigits(minutes / Hour) + ":" + twoDigits(minutes % Hour);
}

QString rangeWords(const QString& least, const QString& most) {
  if (least == most) return least;
  return caption(TextId::ValueFromTo, XCBasicString(least.toStdU16String()),
                 XCBasicString(most.toStdU16String()));
}

QString timeWords(const ValueRange& time, ProgramTimes times) {
  if (times == ProgramTimes::clock)
    return rangeWords(clockWords(time.least), clockWords(time.most));
  return rangeWords(QString::number(time.least), QString::number(time.most)) + " " +
         caption(TextId::MinutesUnit);
}

QString timeCaption(ProgramTimes times) {
  return caption(times == ProgramTimes::clock ? TextId::StartTime : TextId::Time);
}

QString numberedStep(int number) {
  return caption(TextId::Period) + " " + QString::number(number);
}

// "Power 70 %", with what is wrong with some or all rows behind it.
QString valueWords(const QString& name, const QString& value, bool someUnusable) {
  QString words = name;
  if (!value.isEmpty()) words += " " + value;
  if (!someUnusable) return words;
  const TextId fault = value.isEmpty() ? TextId::ValueUnusable : TextId::ValueSometimesUnusable;
  return words + " (" + caption(fault) + ")";
}

bool hasNoTime(const NightSteps& night, int number) {
  return night.times() == ProgramTimes::clock && number == 1;
}

QString stepTimeWords(const NightSteps& night, int number) {
  if (hasNoTime(night, number)) return caption(TextId::FromSwitchOn);
  const StepSummary& step = night.step(number);
  return valueWords(timeCaption(night.times()),
                    step.time ? timeWords(*step.time, night.times()) : QString(),
                    step.someTimeUnusable);
}

QString stepPowerWords(const NightSteps& night, int number) {
  const StepSummary& step = night.step(number);
  return valueWords(caption(TextId::Power), step.power ? powerWords(*step.power) : QString(),
                    step.somePowerUnusable);
}

}  // namespace

QString clockWords(int minutesAfterMidnight) {
  return hoursAndMinutes(minutesAfterMidnight);
}

QString powerWords(const ValueRange& power) {
  return rangeWords(QString::number(power.least), QString::number(power.most)) + " %";
}

QString stepWords(const NightSteps& night, int number) {
  return numberedStep(number) + ": " + stepTimeWords(night, number) + ", " +
         stepPowerWords(night, number);
}

QString nightWords(const NightSteps& night) {
  if (night.empty()) return caption(TextId::NightWithoutRows);
  QStringList lines;
  for (int number = 1; number <= ProgramSteps; ++number) lines << stepWords(night, number);
  return lines.join(QLatin1Char('\n'));
}

QString unusableWords(const NightSteps& night) {
  for (int number = 1; number <= ProgramSteps; ++number) {
    const StepSummary& step = night.step(number);
    if (step.someTimeUnusable) return numberedStep(number) + ": " + stepTimeWords(night, number);
    if (step.somePowerUnusable) return numberedStep(number) + ": " + stepPowerWords(night, number);
  }
  return {};
}

QString momentWords(const NightSteps& night, int minute) {
  const bool clock = night.times() == ProgramTimes::clock;
  const QString time = hoursAndMinutes(clock ? NightSteps::clockAt(minute) : minute);
  const NightSpan* span = night.spanAt(minute);
  return time + " · " +
         (span != nullptr && span->power ? powerWords(*span->power)
                                         : caption(TextId::ValueUnusable));
}

}  // namespace editor
