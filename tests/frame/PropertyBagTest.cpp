#include "frame/PropertyBag.h"

#include <gtest/gtest.h>

using tq7::PropertyBag;

TEST(PropertyBag, ReadsDefaultsAndSurvivesJsonInWritingOrder) {
  PropertyBag bag;
  EXPECT_EQ(bag.ReadProperty("EditStatus", false).toBool(), false);
  bag.WriteProperty("Note", QString::fromUtf8("หมายเหตุ"));
  bag.WriteProperty("EditStatus", true);
  bag.WriteProperty("Note", QString::fromUtf8("ใหม่"));
  const PropertyBag back = PropertyBag::fromJson(bag.toJson());
  EXPECT_EQ(back.names(), (QStringList{"Note", "EditStatus"}));
  EXPECT_EQ(back.ReadProperty("Note").toString(), QString::fromUtf8("ใหม่"));
  EXPECT_TRUE(back.ReadProperty("EditStatus", false).toBool());
  EXPECT_EQ(back.ReadProperty("Missing", 7).toInt(), 7);
}
