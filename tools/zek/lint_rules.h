/// The functions of the rules; lint.cpp gives each its code, and codes_lint.cpp says what it finds. Relies on lint.h.
#pragma once

#include "lint.h"

namespace zek::tool {

/// The number that the image has for none.
inline constexpr unsigned kNumberForNone = 0xFFFFFFFF;

// lint_losses.cpp: what does not reach the image, or as something else.
void FindLostTexts(LintRun& run);
void FindLostArguments(LintRun& run);
void FindNumbersForNone(LintRun& run);
void FindCountsByName(LintRun& run);
void FindSensorsByName(LintRun& run);
void FindIdsByName(LintRun& run);
void FindRowsByName(LintRun& run);
void FindLostOperands(LintRun& run);

// lint_arguments.cpp
void FindArgumentsOfNone(LintRun& run);

// lint_numbers.cpp: numbers that do not count as they are written.
void FindTextBehindNumbers(LintRun& run);
void FindWrappedNumbers(LintRun& run);
void FindNegativeNumbers(LintRun& run);
void FindRowsAboveByte(LintRun& run);

// lint_thresholds.cpp
void FindThresholdsOutOfOrder(LintRun& run);

// lint_unused.cpp: what is given a name and is not used by it.
void FindUnusedActions(LintRun& run);
void FindUnusedTables(LintRun& run);
void FindUnusedGlobals(LintRun& run);
void FindUnusedSteps(LintRun& run);
void FindUnusedWords(LintRun& run);

// lint_words.cpp
void FindWordsDefinedAgain(LintRun& run);
void FindWordsUsedBefore(LintRun& run);
void FindUnknownConditions(LintRun& run);

// lint_tables.cpp
void FindIncompleteFirstTable(LintRun& run);
void FindIncompleteLaterTables(LintRun& run);

// lint_texts.cpp: what the cutting of the text loses.
void FindTextOutsideQuotes(LintRun& run);
void FindOpenQuotes(LintRun& run);
void FindItemsWithoutEquals(LintRun& run);

}  // namespace zek::tool
