#pragma once

class QTranslator;

/// Dates, numbers and the toolkit's own texts in Spanish, whatever the system speaks. It needs the
/// application object, and lasts as long as `toolkit`.
void speakSpanish(QTranslator& toolkit);
