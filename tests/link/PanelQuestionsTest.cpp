#include <deque>
#include <gmock/gmock.h>

#include "link/PanelQuestions.h"
#include "tests/link/FakeTransport.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class PanelQuestionsTest : public testing::Test {
 protected:
  PanelQuestionsTest() { panel.status(kPanelConnected); }

  void runSteps() {
    while (!steps.empty()) {
      const auto step = std::move(steps.front());
      steps.pop_front();
      step();
    }
  }
  // What the answers were, one hand-over in brackets.
  std::string turn() {
    runSteps();
    return std::exchange(answers, {});
  }
  std::unique_ptr<PanelQuestions> asker(const std::string& label) {
    return std::make_unique<PanelQuestions>(
        *panel.client, [this](std::function<void()> step) { steps.push_back(std::move(step)); },
        [this, label](const std::vector<PanelAnswer>& come) {
          answers += label + "[";
          for (const PanelAnswer& answer : come) answers += answer.name + "=" + answer.value + " ";
          answers += "]";
          if (inside) inside();
        });
  }

  FakePanel panel;
  std::deque<std::function<void()>> steps;
  std::string answers;
  std::function<void()> inside;
  std::unique_ptr<PanelQuestions> one = asker("1"), other = asker("2");
};

TEST_F(PanelQuestionsTest, OneHandOverTellsTheLatestOfEachNameAndCountsWhatIsMissing) {
  panel.value("Known", "0");
  one->ask({"Known", "A", "B", "A"});
  one->ask({"B", "C"});
  EXPECT_THAT(panel.transport->take(), ElementsAre("subscribe A", "subscribe B", "subscribe C"));
  EXPECT_EQ(one->missing(), 4U);
  EXPECT_EQ(turn(), "1[Known=0 ]") << "not an empty value for the name that was given twice";
  panel.value("B", "1");
  panel.value("A", "2");
  panel.value("B", "3");
  EXPECT_EQ(turn(), "1[B=3 A=2 ]");
  EXPECT_EQ(one->missing(), 1U);
  panel.value("A", "4");
  EXPECT_EQ(turn(), "1[A=4 ]") << "goes on";
  EXPECT_EQ(one->missing(), 1U) << "answered once is answered";
}

TEST_F(PanelQuestionsTest, OneAskerCancelsOnlyItsOwnAndNothingComesAfterwards) {
  one->ask({"A"});
  other->ask({"A"});
  panel.value("A", "1");
  one->cancel();
  panel.value("A", "0");
  EXPECT_EQ(one->missing(), 0U);
  EXPECT_EQ(turn(), "2[A=0 ]") << "not what was on its way to the one that cancelled";
  one->ask({"A"});
  EXPECT_EQ(turn(), "1[A=0 ]") << "asked anew";
  panel.value("A", "2");
  one.reset();
  EXPECT_EQ(turn(), "2[A=2 ]") << "nor to one that is gone";
  panel.value("A", "3");
  inside = [this] {
    panel.value("A", "4");
    other.reset();
    runSteps();  // as the loop of a box would
  };
  EXPECT_EQ(turn(), "2[A=3 ]") << "an answer may end its asker";
}

TEST_F(PanelQuestionsTest, ManyAreAskedInPieces) {
  std::vector<std::string> names;
  for (int i = 0; i < 1200; ++i) names.push_back("N" + std::to_string(i));
  one->ask(names);
  one->ask({"Last"});
  EXPECT_THAT(panel.transport->take(), SizeIs(1000)) << "the asker's thread does other things in between";
  turn();
  const std::vector<std::string> rest = panel.transport->take();
  EXPECT_THAT(rest, SizeIs(201));
  EXPECT_EQ(rest.front() + " " + rest.back(), "subscribe N1000 subscribe Last");
  one->cancel();
  one->ask(names);
  panel.transport->take();
  one->cancel();
  turn();
  EXPECT_THAT(panel.transport->take(), IsEmpty()) << "the rest was taken back";
}

}  // namespace
}  // namespace tessaly
