#include "object/Exception.h"
#include "object/ModifiedObserver.h"
#include "support/Messages.h"
#include "support/Recorder.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>

using namespace tesseralis;
using namespace tesseralis::test;

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

void send(Observable & observable, std::string const & letters)
{
    for (char const letter : letters) {
        observable.beginModification(new Letter(letter));
    }
    for (std::size_t i = 0; i < letters.size(); ++i) {
        observable.endModification();
    }
}

class ObservableBracket : public testing::Test
{
protected:
    void TearDown() override { EXPECT_EQ(s_liveEvents, 0) << "events leaked or were freed twice"; }
};
} // namespace

TEST_F(ObservableBracket, DeliversInOrderAtTheOutermostCloseAndMergesEqualNeighbours)
{
    for (auto const & [sent, received] : {std::pair("abc", "abc"), {"aaba", "aba"}, {"aaaa", "a"}, {"", ""}}) {
        Subject subject;
        Recorder recorder(subject);
        for (char const * letter = sent; *letter != '\0'; ++letter) {
            subject.beginModification(new Letter(*letter));
        }
        for (std::size_t i = 1; i < std::string(sent).size(); ++i) {
            subject.endModification();
            EXPECT_EQ(recorder.GetCount(), 0u);
        }
        if (*sent != '\0') {
            subject.endModification();
        }
        EXPECT_EQ(lettersOf(recorder), received);
        EXPECT_EQ(subject.started, subject.finished);
    }
}

TEST_F(ObservableBracket, MergesPlainEventsAndCallsTheStartHookForEventsOnly)
{
    Subject subject;
    Recorder recorder(subject);
    subject.beginModification();
    subject.beginModification();
    subject.endModification();
    subject.endModification();
    EXPECT_EQ(lettersOf(recorder), ".");
    EXPECT_EQ(subject.started, 0);
    EXPECT_EQ(subject.finished, 1);
}

TEST_F(ObservableBracket, AbortDropsTheEventQueuedLastAndDeliversNothing)
{
    Subject subject;
    Recorder recorder(subject);
    subject.beginModification(new Letter('a'));
    subject.abortModification();
    subject.abortModification();
    EXPECT_EQ(subject.finished, 0);

    subject.beginModification(new Letter('a'));
    subject.beginModification(new Letter('b'));
    subject.endModification();
    subject.abortModification();
    EXPECT_EQ(recorder.GetCount(), 0u);
    send(subject, "c");
    EXPECT_EQ(lettersOf(recorder), "ac");
}

TEST_F(ObservableBracket, FlushClosesAllBracketsAndDeliversOnce)
{
    Subject subject;
    Recorder recorder(subject);
    for (char const letter : {'a', 'b', 'c'}) {
        subject.beginModification(new Letter(letter));
    }
    subject.flushModification();
    EXPECT_EQ(lettersOf(recorder), "abc");
    EXPECT_EQ(subject.finished, 1);
    send(subject, "d");
    EXPECT_EQ(lettersOf(recorder), "abcd");
}

TEST_F(ObservableBracket, ObserversMayLeaveAndJoinDuringDelivery)
{
    Subject subject;
    Recorder first(subject);
    auto second = std::make_unique<Recorder>(subject);
    Recorder third(subject);
    Recorder late;
    first.SetReaction([&](Observable const &, ObservableEvent const &) {
        second.reset();
        subject.addObserver(&late);
        subject.removeObserver(&first);
    });
    send(subject, "ab");
    EXPECT_EQ(lettersOf(first), "a");
    EXPECT_EQ(lettersOf(third), "ab");
    EXPECT_EQ(lettersOf(late), "b");
    EXPECT_EQ(subject.GetObserverCount(), 2u);
}

TEST_F(ObservableBracket, ABracketOpenedByAnObserverDrainsTheWholeQueueFirst)
{
    Subject subject;
    Recorder first(subject);
    Recorder second(subject);
    first.SetReaction([&](Observable const &, ObservableEvent const &) {
        first.SetReaction(nullptr);
        send(subject, "x");
    });
    send(subject, "ab");
    EXPECT_EQ(lettersOf(first), "abx");
    EXPECT_EQ(lettersOf(second), "bxa");
}

TEST_F(ObservableBracket, AThrowingObserverLeavesTheQueueAndTheLockUsable)
{
    Subject subject;
    Recorder recorder(subject);
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
    Recorder recorder;
    {
        Subject subject;
        subject.addObserver(&recorder);
        recorder.SetReaction([&](Observable const & observable, ObservableEvent const & event) {
            if (dynamic_cast<ObservableDestructionEvent const *>(&event) != nullptr) {
                EXPECT_TRUE(observable.IsDestroyed());
                EXPECT_TRUE(recorder.HasObservable(&observable));
                send(subject, "z");
                Recorder tooLate(subject);
                EXPECT_EQ(tooLate.GetObservableCount(), 0u);
                throw Exception("ignored");
            }
        });
        subject.beginModification(new Letter('a'));
        testing::internal::CaptureStdout();
        subject.die();
        EXPECT_NE(testing::internal::GetCapturedStdout().find("ignored"), std::string::npos);
        EXPECT_EQ(recorder.GetObservableCount(), 0u);
        send(subject, "y");
    }
    EXPECT_EQ(lettersOf(recorder), "a+");

    Subject unwatched;
    unwatched.beginModification(new Letter('a'));
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

    Observable const fresh(static_cast<Observable const &>(a));
    EXPECT_EQ(fresh.GetObserverCount(), 0u);
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
    unsigned int random = 1;
    for (int step = 0; step < 5000; ++step) {
        random = random * 1664525u + 1013904223u;
        Recorder & recorder = recorders[(random >> 8) % recorders.size()];
        if (std::erase(expected, &recorder) > 0) {
            subject.removeObserver(&recorder);
        } else {
            subject.addObserver(&recorder);
            expected.push_back(&recorder);
        }
        ASSERT_EQ(subject.HasObserver(&recorder), !expected.empty() && expected.back() == &recorder);
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

TEST(ModifiedObserver, CallsConnectedMethodsForTheirTypesOnly)
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
}

TEST(ModifiedObserver, AMethodMayDisconnectOthersAndDeleteItsOwner)
{
    Subject subject;
    auto * const receiver = new Receiver;
    int calls = 0;
    Recorder counter;
    counter.SetReaction([&](Observable const &, ObservableEvent const &) { ++calls; });
    receiver->observer.connect(receiver, &Receiver::letterCame);
    receiver->observer.connect(receiver, &Receiver::leave);
    receiver->observer.connect(receiver, &Receiver::anythingCame);
    receiver->observer.connect(receiver, &Receiver::die);
    subject.addObserver(&receiver->observer);
    subject.addObserver(&counter);
    send(subject, "ab");
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(subject.GetObserverCount(), 1u);
}

TEST(ModifiedObserver, CopiesCallTheSameReceiver)
{
    Receiver receiver;
    Subject subject;
    subject.addObserver(&receiver.observer);
    receiver.observer.connect(&receiver, &Receiver::anythingCame);
    ModifiedObserver copy(receiver.observer);
    ModifiedObserver assigned;
    assigned.SetEnabled(false);
    assigned.connect(&receiver, &Receiver::letterCame);
    assigned = copy;
    send(subject, "a");
    EXPECT_EQ(receiver.count, 3);
    EXPECT_EQ(receiver.letters, "");
}
