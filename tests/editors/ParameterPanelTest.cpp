#include <gtest/gtest.h>

#include <QLineEdit>
#include <QSignalSpy>

#include "editors/ParameterPanel.h"
#include "tests/editors/EditorFixture.h"

namespace tessaly {
namespace {

// Catches a field that shows another form or another value than what is taken.
TEST(ParameterPanelTest, TheFieldFollowsWhatIsStoredAndHowItIsShown) {
  EditorFixture fixture;
  const FunctionRecord function = *fixture.dictionary.find("ME0.KEY1.CLIP.SET");
  ParameterPanel panel(fixture.sources, fixture.frameRate, fixture.beeps.sound());
  panel.begin(function, {"ME0.KEY1.CLIP.SET", {{ParameterKind::kFloat, "LEVEL", "51"}}});
  auto& field = *panel.findChild<QLineEdit*>("value");
  const std::string shown = field.text().toStdString();
  panel.setRaw(true);
  EXPECT_NE(field.text().toStdString(), shown);
  panel.setRaw(false);
  EXPECT_EQ(field.text().toStdString(), shown);
  panel.setValue(0, "128");
  field.insert(QStringLiteral("x"));
  EXPECT_EQ(fixture.beeps.take(), 1);
  EXPECT_EQ(panel.draft().parameters[0].value, "128") << "rather than what the shown 50.2 stands for";
  QSignalSpy changed(&panel, &ParameterPanel::changed);
  panel.setValue(0, "255");
  EXPECT_EQ(changed.count(), 1);
  EXPECT_EQ(panel.draft().parameters[0].value, "255");
  EXPECT_EQ(field.text().toStdString(), "100.0");
}

}  // namespace
}  // namespace tessaly
