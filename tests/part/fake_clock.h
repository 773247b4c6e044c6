// The panel's tick clock under the hand of a test.
#pragma once

/// What the clock shows from now on, in milliseconds.
void setTick(unsigned long long tick);
