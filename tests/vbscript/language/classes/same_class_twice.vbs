Class C
End Class
Class C  ' compile error: 1041
End Class
