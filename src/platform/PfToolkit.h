#pragma once

// Counted start-up and shut-down of the toolkit's database and node-kit
// machinery.  The toolkit's own finish cannot be followed by a new init in
// the same process, so shut-down only lowers the counts and the toolkit
// stays up until the process ends.
class PfToolkit {
public:
    static void initDB();
    static void finishDB();
    static void initNodeKit();
    static void finishNodeKit();

    static int getDBInitCount();
    static int getNodeKitInitCount();
};
