// Keeps the test binary buildable until its first test file lands.
