#pragma once

class Stepper;

/// Lets assistive technology see each stepper as one control with a value that it can change.
/// Further calls do nothing.
void installStepperAccessibility();

/// Tells assistive technology that the stepper shows another value.
void announceStepperValue(Stepper& stepper);
