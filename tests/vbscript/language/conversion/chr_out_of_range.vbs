x = Chr(256)  ' error: 5
