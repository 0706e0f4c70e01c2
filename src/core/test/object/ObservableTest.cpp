#include "object/ModifiedObserver.h"
#include "support/Testing.h"

#include <array>

namespace {
int s_liveEvents = 0;

/// An event with a letter; counts how many of it are alive.
class Letter : public ObservableEvent
{
public:
    explicit Letter(char letter) : m_letter(letter) { ++s_liveEvents; }
    Letter(Letter const & source) : ObservableEvent(source), m_letter(source.m_letter) { ++s_liveEvents; }
    ~Letter() override { --s_liveEvents; }

    char Get() const { return m_letter; }
    ObservableEvent * GetCloned() const override { return new Letter(*this); }
    bool IsEqual(ObservableEvent const & event) const override
    {
        return ObservableEvent::IsEqual(event) && castEvent<Letter>(event).m_letter == m_letter;
    }

private:
    char m_letter;
};

class Subject : public Observable
{
public:
    ~Subject() override { die(); }
    void die() { destroyObservable(); }

    int started = 0;
    int finished = 0;

protected:
    void modificationStarted() override { ++started; }
    void modificationFinished() override { ++finished; }
};

/// What a recorder got, a letter each: '.' for a plain event, '+' for a destruction.
std::string lettersOf(Recorder const & recorder)
{
    std::string letters;
    for (std::size_t i = 0; i < recorder.GetCount(); ++i) {
        Letter const * const letter = recorder.GetAs<Letter>(i);
        letters += letter != nullptr ? letter->Get() : recorder.GetAs<ObservableDestructionEvent>(i) ? '+' : '.';
    }
    return letters;
}

void open(Observable & observable, std::string const & letters)
{
    for (char const letter : letters) {
        observable.beginModification(new Letter(letter));
    }
}

void send(Observable & observable, std::string const & letters)
{
    open(observable, letters);
    for (std::size_t i = 0; i < letters.size(); ++i) {
        observable.endModification();
    }
}

class ObservableBracket : public testing::Test
{
    struct LeakCheck
    {
        ~LeakCheck() { EXPECT_EQ(s_liveEvents, 0) << "events leaked or were freed twice"; }
    } m_check; // goes last

protected:
    Subject subject;
    Recorder recorder{subject};
};
} // namespace

TEST_F(ObservableBracket, DeliversInOrderAtTheOutermostCloseAndMergesEqualNeighbours)
{
    for (std::string const sent : {"abc", "aaba", "aaaa"}) {
        recorder.clear();
        open(subject, sent);
        for (std::size_t i = 1; i < sent.size(); ++i) {
            subject.endModification();
        }
        EXPECT_EQ(recorder.GetCount(), 0u);
        subject.endModification();
        EXPECT_EQ(lettersOf(recorder), sent == "abc" ? "abc" : sent == "aaba" ? "aba" : "a");
        EXPECT_EQ(subject.started, subject.finished);
    }
    recorder.clear();
    int const started = subject.started;
    subject.beginModification();
    subject.beginModification();
    subject.endModification();
    subject.endModification();
    EXPECT_EQ(lettersOf(recorder), ".");
    EXPECT_EQ(subject.started, started) << "only an event calls the hook";
    EXPECT_EQ(subject.finished, started + 1);
}

TEST_F(ObservableBracket, AbortDropsTheEventQueuedLastAndFlushDeliversAll)
{
    open(subject, "a");
    subject.abortModification();
    subject.abortModification();
    EXPECT_EQ(subject.finished, 0);

    open(subject, "ab");
    subject.endModification();
    subject.abortModification();
    EXPECT_EQ(recorder.GetCount(), 0u);
    send(subject, "c");
    EXPECT_EQ(lettersOf(recorder), "ac");

    open(subject, "def");
    subject.flushModification();
    EXPECT_EQ(lettersOf(recorder), "acdef");
    EXPECT_EQ(subject.finished, 2);
    send(subject, "g");
    EXPECT_EQ(lettersOf(recorder), "acdefg");
}

TEST_F(ObservableBracket, ObserversMayLeaveAndJoinDuringDelivery)
{
    auto second = std::make_unique<Recorder>(subject);
    Recorder third(subject);
    Recorder late;
    recorder.SetReaction([&](Observable const &, ObservableEvent const &) {
        second.reset();
        subject.addObserver(&late);
        subject.removeObserver(&recorder);
    });
    send(subject, "ab");
    EXPECT_EQ(lettersOf(recorder), "a");
    EXPECT_EQ(lettersOf(third), "ab");
    EXPECT_EQ(lettersOf(late), "b");
    EXPECT_EQ(subject.GetObserverCount(), 2u);
}

TEST_F(ObservableBracket, ABracketOpenedByAnObserverDrainsTheWholeQueueFirst)
{
    Recorder second(subject);
    recorder.SetReaction([&](Observable const &, ObservableEvent const &) {
        recorder.SetReaction(nullptr);
        send(subject, "x");
    });
    send(subject, "ab");
    EXPECT_EQ(lettersOf(recorder), "abx");
    EXPECT_EQ(lettersOf(second), "bxa");
}

TEST_F(ObservableBracket, AThrowingObserverLeavesTheQueueAndTheLockUsable)
{
    recorder.SetReaction([&](Observable const &, ObservableEvent const &) {
        recorder.SetReaction(nullptr);
        throw Exception("no!");
    });
    EXPECT_EQ(messageOf([&] { send(subject, "ab"); }), "no!");
    send(subject, "c");
    EXPECT_EQ(lettersOf(recorder), "abc");
}

TEST_F(ObservableBracket, DestructionDeliversOpenBracketsFirstAndThenCutsAllLinks)
{
    recorder.SetReaction([&](Observable const & observable, ObservableEvent const & event) {
        if (dynamic_cast<ObservableDestructionEvent const *>(&event) != nullptr) {
            EXPECT_TRUE(observable.IsDestroyed());
            EXPECT_TRUE(recorder.HasObservable(&observable));
            send(subject, "z");
            EXPECT_EQ(Recorder(subject).GetObservableCount(), 0u) << "too late";
            throw Exception("ignored");
        }
    });
    open(subject, "a");
    EXPECT_EQ(logOf([&] { subject.die(); }), "ignored\n\n");
    EXPECT_EQ(recorder.GetObservableCount(), 0u);
    send(subject, "y");
    EXPECT_EQ(lettersOf(recorder), "a+");

    Subject unwatched;
    open(unwatched, "a");
    unwatched.die();
    EXPECT_FALSE(unwatched.IsDestroyed());
}

TEST(Observation, CopiesOfObserversWatchTheSameAndCopiesOfObservablesNothing)
{
    Subject a;
    Subject b;
    Recorder recorder(a);
    b.addObserver(&recorder);
    Observer const copy(recorder);
    EXPECT_TRUE(copy.HasObservable(&a) && copy.HasObservable(&b));

    Subject c;
    Recorder other(c);
    static_cast<Observer &>(other) = recorder;
    EXPECT_EQ(c.GetObserverCount(), 0u);
    EXPECT_EQ(a.GetObserverCount(), 3u);

    EXPECT_EQ(Observable(static_cast<Observable const &>(a)).GetObserverCount(), 0u);
    c = a;
    EXPECT_EQ(c.GetObserverCount(), 0u);
    a.addObserver(&recorder);
    EXPECT_EQ(a.GetObserverCount(), 3u);
    a.removeObserver(nullptr);
    a.clearObservers();
    EXPECT_FALSE(recorder.HasObservable(&a));
}

TEST(Observation, OrderIsKeptThroughManyAdditionsAndRemovals)
{
    Subject subject;
    std::array<Recorder, 200> recorders;
    std::vector<Observer *> expected;
    std::mt19937 random(1);
    for (int step = 0; step < 5000; ++step) {
        Recorder & recorder = recorders[random() % recorders.size()];
        bool const isThere = std::erase(expected, &recorder) > 0;
        ASSERT_EQ(subject.HasObserver(&recorder), isThere);
        if (isThere) {
            subject.removeObserver(&recorder);
        } else {
            subject.addObserver(&recorder);
            expected.push_back(&recorder);
        }
    }
    std::vector<Observer *> actual;
    for (ObservableIterator i(subject); !i.IsAtEnd(); ++i) {
        actual.push_back(&*i);
    }
    EXPECT_EQ(actual, expected);
}

namespace {
class Receiver
{
public:
    void letterCame(Subject const &, Letter const & letter) { letters += letter.Get(); }
    void anythingCame(Observable const &, ObservableEvent const &) { ++count; }
    void leave(Observable const &, ObservableEvent const &)
    {
        observer.disconnect(this, &Receiver::leave);
        observer.disconnect(this, &Receiver::letterCame);
    }
    void die(Observable const &, ObservableEvent const &) { delete this; }

    ModifiedObserver observer;
    std::string letters;
    int count = 0;
};
} // namespace

TEST(ModifiedObserver, CallsConnectedMethodsForTheirTypesOnlyAndACopyTheSame)
{
    Receiver receiver;
    Subject subject;
    Observable other;
    receiver.observer.connect(&receiver, &Receiver::letterCame);
    receiver.observer.connect(&receiver, &Receiver::letterCame);
    receiver.observer.connect(&receiver, &Receiver::anythingCame);
    subject.addObserver(&receiver.observer);
    other.addObserver(&receiver.observer);

    send(subject, "a");
    send(other, "b");
    subject.beginModification();
    subject.endModification();
    EXPECT_EQ(receiver.letters, "a");
    EXPECT_EQ(receiver.count, 3);

    receiver.observer.SetEnabled(false);
    send(subject, "c");
    receiver.observer.SetEnabled(true);
    receiver.observer.disconnect(&receiver, &Receiver::letterCame);
    send(subject, "d");
    EXPECT_EQ(receiver.letters, "a");
    EXPECT_EQ(receiver.count, 4);

    ModifiedObserver const copy(receiver.observer);
    ModifiedObserver assigned;
    assigned.SetEnabled(false);
    assigned.connect(&receiver, &Receiver::letterCame);
    assigned = copy;
    send(subject, "e");
    EXPECT_EQ(receiver.count, 7);
    EXPECT_EQ(receiver.letters, "a");
}

TEST(ModifiedObserver, AMethodMayDisconnectOthersAndDeleteItsOwner)
{
    Subject subject;
    auto * const receiver = new Receiver;
    receiver->observer.connect(receiver, &Receiver::letterCame);
    receiver->observer.connect(receiver, &Receiver::leave);
    receiver->observer.connect(receiver, &Receiver::anythingCame);
    receiver->observer.connect(receiver, &Receiver::die);
    subject.addObserver(&receiver->observer);
    Recorder const behind(subject);
    send(subject, "ab");
    EXPECT_EQ(lettersOf(behind), "ab");
    EXPECT_EQ(subject.GetObserverCount(), 1u);
}
