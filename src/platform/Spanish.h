#pragma once

class QTranslator;

/// Sets dates, numbers and the toolkit's own texts to Spanish, whatever the system's language.
/// Needs the application object. The translation lasts as long as `toolkit`.
void speakSpanish(QTranslator& toolkit);
