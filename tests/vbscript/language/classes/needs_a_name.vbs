Class  ' compile error: 1010
End Class
