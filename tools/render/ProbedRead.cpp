#include "ProbedRead.h"

#include "SceneGraphCheck.h"

#include <Inventor/SoDB.h>
#include <Inventor/SoInput.h>
#include <Inventor/errors/SoDebugError.h>
#include <Inventor/errors/SoReadError.h>
#include <Inventor/fields/SoFieldContainer.h>
#include <Inventor/fields/SoFieldData.h>
#include <Inventor/lists/SoTypeList.h>
#include <Inventor/nodes/SoSeparator.h>

#include <cerrno>
#include <cstring>
#include <pthread.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

// Enough for the reader to go through any nesting a file of a few
// hundred megabytes can hold; only touched pages take memory.
constexpr size_t probeStackBytes = size_t(1) << 30;

// Watches the field lists of every class of field containers that the
// toolkit can create.  A field that a file declares on such a class is
// added to the class's own list, where every later node of the class finds
// it at a place that is not its own.
class FieldListWatch {
public:
    FieldListWatch() {
        SoTypeList types;
        SoType::getAllDerivedFrom(SoFieldContainer::getClassTypeId(), types);
        for (int i = 0; i < types.getLength(); ++i)
            if (types[i].canCreateInstance())
                watch(static_cast<SoFieldContainer*>(types[i].createInstance()));
    }
    ~FieldListWatch() {
        for (const Watched& watched : m_classes)
            watched.instance->unref();
    }
    FieldListWatch(const FieldListWatch&) = delete;
    FieldListWatch& operator=(const FieldListWatch&) = delete;

    // The first field added to a class since the watch began, described,
    // or an empty text.
    std::string addedField() const {
        for (const Watched& watched : m_classes)
            if (watched.fields->getNumFields() != watched.count)
                return std::string("a ") + watched.instance->getTypeId().getName().getString() +
                       " node declares a field \"" +
                       watched.fields->getFieldName(watched.count).getString() +
                       "\" that its class does not have, which the toolkit cannot read safely";
        return std::string();
    }

private:
    struct Watched {
        SoFieldContainer* instance;
        const SoFieldData* fields;
        int count;
    };

    void watch(SoFieldContainer* instance) {
        if (!instance)
            return;
        instance->ref();
        const SoFieldData* fields = instance->getFieldData();
        if (fields)
            m_classes.push_back({instance, fields, fields->getNumFields()});
        else
            instance->unref();
    }

    std::vector<Watched> m_classes;
};

// An input that stops the read as soon as a declared field has been added
// to a class, before a later node of the class can stumble over it.  The
// reader takes every node and field name through read(SbName&), so it sees
// each declaration right after it was made.
class WatchedInput : public SoInput {
public:
    using SoInput::read;
    SbBool read(SbName& name, SbBool validIdent) override {
        if (!m_problem.empty())
            return FALSE;
        const SbBool done = SoInput::read(name, validIdent);
        m_problem = m_watch.addedField();
        if (m_problem.empty())
            return done;
        SbString location;
        getLocationString(location);
        m_problem += location.getString();
        return FALSE;
    }

    // What stopped the read, in the form of a read error message, or an
    // empty text.
    std::string problem() const { return m_problem.empty() ? m_watch.addedField() : m_problem; }

private:
    FieldListWatch m_watch;
    std::string m_problem;
};

void ignoreMessage(const SoError*, void*) {}

// Runs in the child: reads the scene and says what would go wrong.  The
// scene is never freed: the process ends right after.
std::string probeInChild(const std::function<bool(SoInput&)>& openInput) {
    SoError::setHandlerCallback(&ignoreMessage, nullptr);
    SoDebugError::setHandlerCallback(&ignoreMessage, nullptr);
    SoReadError::setHandlerCallback(&ignoreMessage, nullptr);
    WatchedInput input;
    if (!openInput(input))
        return std::string();
    SoSeparator* root = SoDB::readAll(&input);
    if (!input.problem().empty() || !root)
        return input.problem();
    root->ref();
    return sceneGraphProblem(root);
}

struct ProbeTask {
    const std::function<bool(SoInput&)>* openInput;
    std::string verdict;
};

void* runProbeTask(void* data) {
    auto* task = static_cast<ProbeTask*>(data);
    task->verdict = probeInChild(*task->openInput);
    return nullptr;
}

// The child's verdict, read on a thread with a large stack.
std::string probeOnLargeStack(const std::function<bool(SoInput&)>& openInput) {
    ProbeTask task{&openInput, std::string()};
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, probeStackBytes);
    pthread_t thread;
    const bool started = pthread_create(&thread, &attributes, &runProbeTask, &task) == 0;
    pthread_attr_destroy(&attributes);
    if (!started)
        return probeInChild(openInput);
    pthread_join(thread, nullptr);
    return task.verdict;
}

void writeAll(int fd, const std::string& text) {
    for (size_t done = 0; done < text.size();) {
        const ssize_t written = ::write(fd, text.data() + done, text.size() - done);
        if (written <= 0)
            return;
        done += static_cast<size_t>(written);
    }
}

std::string readAll(int fd) {
    std::string text;
    char buffer[512];
    for (ssize_t got; (got = ::read(fd, buffer, sizeof buffer)) != 0;) {
        if (got > 0)
            text.append(buffer, static_cast<size_t>(got));
        else if (errno != EINTR)
            break;
    }
    return text;
}

std::string describeEnd(int status) {
    if (WIFSIGNALED(status))
        return std::string("the toolkit's reader crashed on it (") + strsignal(WTERMSIG(status)) +
               ")";
    return "the toolkit's reader failed on it (exit status " + std::to_string(WEXITSTATUS(status)) +
           ")";
}

} // namespace

std::string probeSceneRead(const std::function<bool(SoInput&)>& openInput) {
    int channel[2];
    if (pipe(channel) != 0)
        return "cannot start the trial read: " + std::string(std::strerror(errno));
    const pid_t child = fork();
    if (child < 0) {
        close(channel[0]);
        close(channel[1]);
        return "cannot start the trial read: " + std::string(std::strerror(errno));
    }
    if (child == 0) {
        close(channel[0]);
        writeAll(channel[1], probeOnLargeStack(openInput));
        _exit(0);
    }
    close(channel[1]);
    const std::string verdict = readAll(channel[0]);
    close(channel[0]);
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    const bool finished = WIFEXITED(status) && WEXITSTATUS(status) == 0;
    return finished ? verdict : describeEnd(status);
}
