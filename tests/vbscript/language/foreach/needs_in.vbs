For Each x Of Array(1)  ' compile error: 1046
Next
