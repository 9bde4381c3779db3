#pragma once

class SoGroup;
class SoSeparator;
class SoText3;

// Texts as the toolkit cannot draw them by itself.  Coin has no annotation
// text: an annotation text is a text under an SoAnnotation, drawn after the
// scene without depth test.  Coin reads the text-outline element but draws
// no outline: each text is followed by a pass that, at render and while
// the element is on, draws the text again as lines.
class PfText {
public:
    // The separator that holds one text; drawn over the scene when asked.
    static SoSeparator* createHolder(bool annotation);
    // Appends the text and its outline pass.
    static void addOutlinedText(SoGroup* holder, SoText3* text);
};
