// The tests of the layers put an include in front of this.
