#include <Bitmap.h>

#include <cstring>
#include <vector>

#include <gtest/gtest.h>

TEST(BitmapTest, RowsArePaddedToFourBytes)
{
	BBitmap icon(BRect(0, 0, 15, 15), B_CMAP8);
	ASSERT_EQ(B_OK, icon.InitCheck());
	EXPECT_EQ(16, icon.BytesPerRow());
	EXPECT_EQ(256, icon.BitsLength());

	BBitmap odd(BRect(10, 10, 14, 12), B_CMAP8);
	EXPECT_EQ(8, odd.BytesPerRow());
	EXPECT_EQ(24, odd.BitsLength());

	BBitmap mono(BRect(0, 0, 32, 1), B_GRAY1);
	EXPECT_EQ(8, mono.BytesPerRow());
	BBitmap colour(BRect(0, 0, 2, 0), B_RGB32);
	EXPECT_EQ(12, colour.BytesPerRow());

	BBitmap empty(BRect(), B_CMAP8);
	EXPECT_NE(B_OK, empty.InitCheck());
	EXPECT_EQ(0, empty.BitsLength());
	empty.SetBits("x", 1, 0, B_CMAP8);
}


TEST(BitmapTest, SetBitsCopiesOnlyItsOwnSpaceAndStaysInside)
{
	BBitmap bitmap(BRect(0, 0, 3, 1), B_CMAP8);
	ASSERT_EQ(8, bitmap.BitsLength());
	const uint8* bits = static_cast<const uint8*>(bitmap.Bits());
	EXPECT_EQ(std::vector<uint8>(8, 0), std::vector<uint8>(bits, bits + 8));

	const uint8 data[12] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
	bitmap.SetBits(data, 12, 5, B_CMAP8);
	EXPECT_EQ((std::vector<uint8>{0, 0, 0, 0, 0, 1, 2, 3}), std::vector<uint8>(bits, bits + 8));

	bitmap.SetBits(data, 8, 0, B_RGB32);
	EXPECT_EQ(0, bits[0]);
	bitmap.SetBits(data, 4, 8, B_CMAP8);
	bitmap.SetBits(data, 4, -1, B_CMAP8);
	EXPECT_EQ((std::vector<uint8>{0, 0, 0, 0, 0, 1, 2, 3}), std::vector<uint8>(bits, bits + 8));
}
