%Enter your Matlab calculations here


