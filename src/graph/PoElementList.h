#pragma once

// The library's traversal-state elements, registered in a fixed order and
// unregistered in the reverse order.
class PoElementList {
public:
    static void initClasses(void);
    static void exitClasses(void);
};
