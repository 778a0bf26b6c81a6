// SPDX-License-Identifier: GPL-3.0-or-later
// For controls whose bitmap holds several pictures of equal height below one another. [window thread]
#pragma once

#include <algorithm>

namespace Tovra
{
class IMultiBitmapControl
{
public:
    virtual ~IMultiBitmapControl() = default;

    virtual void setHeightOfOneImage(const double& height) { heightOfOneImage = height > 0.0 ? height : 0.0; }
    virtual double getHeightOfOneImage() const { return heightOfOneImage; }
    // Takes the height from the bitmap and the number of images.
    virtual void autoComputeHeightOfOneImage() = 0;
    int getNumberOfImages() const { return images; }

protected:
    // At least one.
    void setNumberOfImages(double number)
    {
        constexpr double most = 10000.0;
        images = number >= 1.0 ? int(std::min(number, most)) : 1;
    }

    double heightOfOneImage = 0.0; // in units

private:
    int images = 1;
};
}
